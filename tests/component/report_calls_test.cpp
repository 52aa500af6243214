#include "component/report_calls.h"

#include <gtest/gtest.h>

#include "component/store_workstation.h"

namespace tandril::test {
namespace {

std::string report(std::string_view files) {
    return element("UploadReport", files);
}
std::string file(std::string_view entries) {
    return element("File", entries);
}

TEST(DownloadErrors, TheFirstReportIsStoredByteForByte) {
    StoreWorkstation w;
    const std::string xml =
        "<?xml version='1.0'?>\n<R>\n <File ID='U1'> " + entry("Error", "A1") + "</File>\n</R>\n";
    EXPECT_EQ(w.client.DownloadErrors(xml), "");
    EXPECT_EQ(w.report(), xml);
    EXPECT_EQ(w.error(), "");
    EXPECT_EQ(w.log(), "");
}

TEST(DownloadErrors, ALaterReportIsAppended) {
    StoreWorkstation w;
    w.putReport(report(file(entry("Error", "A1"))));
    EXPECT_EQ(w.client.DownloadErrors("<other><Note/>" + file(entry("Error", "A2")) + "</other>"),
              "");
    EXPECT_EQ(w.report(), report(file(entry("Error", "A1")) + file(entry("Error", "A2"))));
}

TEST(DownloadErrors, ALaterReportWithoutFilesHasTheStoredOneWrittenAgain) {
    StoreWorkstation w;
    w.putReport("<R>\n <File ID='U1'> " + entry("Error", "A1") + "</File>\n</R>\n");
    EXPECT_EQ(w.client.DownloadErrors("<other/>"), "");
    EXPECT_EQ(w.report(), "<R><File ID=\"U1\">" + entry("Error", "A1") + "</File></R>");
}

TEST(DownloadErrors, OnlyConfirmationsLeaveAnEmptyReport) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "20") + order("A2", "MU", "15")));
    w.client.DownloadErrors(
        report(file(entry("Completed", "A1")) + file(entry("Completed", "A2")) + file("")));
    EXPECT_EQ(w.report(), "<UploadReport/>");
    EXPECT_EQ(w.sections(), orders(order("A2", "M", "15")));
    EXPECT_EQ(w.client.ShowErrorPool(),
              "<a class=cssOption href=javascript:ShowErrors()>*&nbsptext of SLBEU0290(0)</a>");
}

TEST(DownloadErrors, AppliesWhatWaitedInTheStoredReport) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "20")));
    w.putReport(report(file(entry("Completed", "A1"))));
    w.client.DownloadErrors(report(file(entry("Error", "A2"))));
    EXPECT_EQ(w.sections(), orders(""));
    EXPECT_EQ(w.report(), report(file(entry("Error", "A2"))));
}

TEST(DownloadErrors, ThatIsNoXmlWritesNothing) {
    for (const bool hasReport : {false, true}) {
        StoreWorkstation w;
        const std::string before = hasReport ? "damaged" : "(no file)";
        if (hasReport) {
            w.putReport(before);
        }
        EXPECT_EQ(w.client.DownloadErrors("<R>"), "text of SLBEU0288");
        EXPECT_EQ(w.error(), "text of SLBEU0288");
        EXPECT_EQ(w.log(), logHeader("Download Errors") + errorLine("text of SLBEU0288"));
        EXPECT_EQ(w.report(), before);
    }
}

TEST(DownloadErrors, PutsADamagedReportAside) {
    StoreWorkstation w;
    w.putReport("damaged");
    const std::string next = report(file(entry("Error", "A1")));
    EXPECT_EQ(w.client.DownloadErrors(next), "text of SLBEU0289");
    EXPECT_EQ(w.log(), logHeader("Download Errors") + errorLine("text of SLBEU0289"));
    EXPECT_EQ(w.report(), "(no file)");
    EXPECT_EQ(w.machine.files.content(paths::damagedReport), "damaged");
    EXPECT_EQ(w.client.DownloadErrors(next), "");
    EXPECT_EQ(w.report(), next);
}

TEST(DownloadErrors, WithoutAStoreIsStoredAndNotApplied) {
    for (const std::string_view before : {"", "<R><File/></R>"}) {
        StoreWorkstation w;
        w.machine.files.remove(paths::store);
        if (!before.empty()) {
            w.putReport(before);
        }
        const std::string xml = "<R>" + file(entry("Completed", "A1")) + "</R>";
        EXPECT_EQ(w.client.DownloadErrors(xml), "text of SLBEU0260");
        EXPECT_EQ(w.log(), logHeader("Download Errors") + errorLine("text of SLBEU0260"));
        EXPECT_EQ(w.report(), "<R>" + std::string(before.empty() ? "" : "<File/>") +
                                  file(entry("Completed", "A1")) + "</R>");
    }
}

// The report is stored before the store is looked at: a call whose report got lost must not end in
// the store's error, behind which the page would take the report for stored.
TEST(DownloadErrors, WithoutAStoreFailsForTheReportThatCannotBeStored) {
    for (const std::string_view before : {"", "<R/>"}) {
        StoreWorkstation w;
        w.machine.files.remove(paths::store);
        if (!before.empty()) {
            w.putReport(before);
        }
        w.machine.faults.failOn(FileOperation::Replace, 1);
        EXPECT_THROW(w.client.DownloadErrors(report(file(entry("Error", "A1")))), Fault);
        EXPECT_EQ(w.error(), "1");
        EXPECT_EQ(w.log(), "");
        EXPECT_EQ(w.report(), before.empty() ? "(no file)" : before);
    }
}

TEST(DownloadErrors, WithoutAStoreAndALogStoresTheReport) {
    StoreWorkstation w;
    w.machine.files.remove(paths::store);
    w.machine.files.remove(paths::log);
    const std::string xml = report(file(entry("Error", "A1")));
    EXPECT_THROW(w.client.DownloadErrors(xml), Fault);
    EXPECT_EQ(w.error(), "text of SLBEU0260");
    EXPECT_EQ(w.report(), xml);
}

TEST(DownloadErrors, ReadsAndWritesEachFileOnce) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "NU", "15") + order("A2", "NU", "15")));
    w.putReport(report(file(entry("Error", "A9"))));
    w.machine.files.forgetCalls();
    w.client.DownloadErrors(report(file(entry("Completed", "A1") + entry("Completed", "A2"))));
    for (const std::string_view path : {paths::store, paths::report}) {
        EXPECT_EQ(w.machine.files.count(FileOperation::Read, path), 1) << path;
        EXPECT_EQ(w.machine.files.count(FileOperation::Replace, path), 1) << path;
    }
}

TEST(DownloadErrors, KeepsCopiesBeforeItTakesRecordsOut) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "20")));
    w.machine.files.forgetCalls();
    w.client.DownloadErrors(report(file(entry("Completed", "A1"))));
    const auto& calls = w.machine.files.calls();
    const auto written = [&](std::string_view path) {
        return std::find_if(calls.begin(), calls.end(), [&](const FileCall& call) {
            return call.operation == FileOperation::Replace && call.path == path;
        });
    };
    EXPECT_LT(written(paths::removed), written(paths::store));
    EXPECT_LT(written(paths::store), calls.end());
    EXPECT_NE(w.machine.files.content(paths::removed).find("Reason=\"report\""), std::string::npos);
}

TEST(DownloadErrors, ChangesNothingWhenTheCopiesCannotBeKept) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "20")));
    w.machine.faults.failOn(FileOperation::Replace, 1);
    EXPECT_THROW(w.client.DownloadErrors(report(file(entry("Completed", "A1")))), Fault);
    EXPECT_EQ(w.sections(), orders(order("A1", "MU", "20")));
    EXPECT_EQ(w.report(), "(no file)");
}

TEST(ShowErrorPool, CountsTheErrorsOfAllFiles) {
    StoreWorkstation w;
    EXPECT_EQ(w.client.ShowErrorPool(), "");
    EXPECT_EQ(w.error(), "1");
    w.putReport(report(file(entry("Error", "A1") + entry("Error", "A1", "10")) +
                       file(entry("Error", "A2") + entry("Completed", "A2"))));
    EXPECT_EQ(w.client.ShowErrorPool(),
              "<a class=cssOption href=javascript:ShowErrors()>*&nbsptext of SLBEU0290(3)</a>");
    EXPECT_EQ(w.error(), "1");
    EXPECT_EQ(w.log(), "");
}

TEST(ShowErrorPool, AndTheListNeedAReportThatLoads) {
    StoreWorkstation w;
    w.putReport("damaged");
    EXPECT_EQ(w.client.ShowErrorPool(), "");
    EXPECT_EQ(w.client.ShowErrorList(), "");
    EXPECT_EQ(w.error(), "text of SLBEU0289");
    const std::string logged = logHeader("Error Pool") + errorLine("text of SLBEU0289");
    EXPECT_EQ(w.log(), logged + logged);
}

TEST(ShowErrorList, WithoutAReportIsEmpty) {
    StoreWorkstation w;
    EXPECT_EQ(w.client.ShowErrorList(), "");
    EXPECT_EQ(w.error(), "1");
    EXPECT_EQ(w.log(), "");
}

TEST(StroreErrorOrders, FillsTheListAnewEachTime) {
    StoreWorkstation w;
    w.putReport(
        report(file(entry("Error", "A1") + entry("Completed", "A2") + entry("Error", "A1"))));
    EXPECT_EQ(w.client.StroreErrorOrders().text, std::nullopt);
    EXPECT_EQ(w.module.errorOrders, (std::vector<std::string>{"A1", "A1"}));
    w.machine.files.remove(paths::report);
    w.client.StroreErrorOrders();
    EXPECT_TRUE(w.module.errorOrders.empty());
}

TEST(StroreErrorOrders, LeavesTheErrorTextAlone) {
    StoreWorkstation w;
    w.client.updatexml("<");
    w.putReport("damaged");
    w.client.StroreErrorOrders();
    EXPECT_EQ(w.error(), "text of SLBEU0267");
}

TEST(StroreErrorOrders, FailsOnMoreThan1001Errors) {
    StoreWorkstation w;
    std::string entries;
    for (int i = 0; i < 1002; ++i) {
        entries += entry("Error", "A1");
    }
    w.putReport(report(file(entries)));
    EXPECT_THROW(w.client.StroreErrorOrders(), Fault);
}

}  // namespace
}  // namespace tandril::test
