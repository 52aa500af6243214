#include "component/store_calls.h"

#include <gtest/gtest.h>

#include "component/store_workstation.h"
#include "platform/unicode.h"
#include "support/files_wrapper.h"

namespace tandril::test {
namespace {

constexpr const char* downloaded = "New Data has been downloaded.";

std::string harbrook(std::string_view sections) {
    return element("harbrook", sections);
}

Variant v(std::string_view text) {
    return {std::string(text)};
}

TEST(DownloadXml, TheFirstOneBecomesTheStoreByteForByte) {
    StoreWorkstation w;
    w.machine.files.remove(paths::store);
    const std::string xml = "<?xml version='1.0'?>\r\n<harbrook  a='1'>\n <x/> &#65;</harbrook>\n";
    EXPECT_EQ(w.client.DownloadXml(xml), downloaded);
    EXPECT_EQ(w.machine.files.content(paths::store), xml);
    EXPECT_EQ(w.log(), logHeader("Download XML") + xmlLine(xml));
    EXPECT_EQ(w.error(), "");
}

// Files with an encoding of their own, in which half a character is lost.
class FilesWithEncoding : public FilesWrapper {
  public:
    using FilesWrapper::FilesWrapper;
    std::string encodeAnsi(std::string text) const override {
        ++calls;
        return platform::isUtf8(text) ? text : "?";
    }
    mutable int calls = 0;
};

TEST(DownloadXml, ALargeOneIsLoggedInPiecesOfWholeCharacters) {
    for (const std::size_t shift : {0U, 1U, 2U}) {
        StoreWorkstation w;
        w.machine.files.remove(paths::store);
        FilesWithEncoding files(w.machine.files);
        const platform::Machine machine{w.machine.registry, files, w.machine.database,
                                        w.machine.shell, w.machine.clock};
        Module module{machine};
        std::string xml = "<harbrook>" + std::string(shift, 'x');
        for (int i = 0; i < 300'000; ++i) {
            xml += "\xE2\x82\xAC";
        }
        xml += "</harbrook>";
        EXPECT_EQ(Client20(module).DownloadXml(xml), downloaded);
        EXPECT_TRUE(w.log() == logHeader("Download XML") + xmlLine(xml));
        EXPECT_EQ(files.calls, 4);
    }
}

TEST(DownloadXml, ALaterOneIsMerged) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "M", "15")) + activities(""));
    const std::string xml = harbrook(orders(order("A1", "O", "15") + order("A2", "O", "15")));
    EXPECT_EQ(w.client.DownloadXml(xml), downloaded);
    EXPECT_EQ(w.sections(),
              orders(order("A1", "M", "15") + order("A2", "O", "15")) + activities(""));
    EXPECT_EQ(w.log(), logHeader("Download XML") + xmlLine(xml));
    EXPECT_EQ(w.error(), "");
}

TEST(DownloadXml, ThatTakesNothingSaysSoAndSavesNothing) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "M", "15")));
    w.machine.files.forgetCalls();
    EXPECT_EQ(w.client.DownloadXml("<harbrook/>"), "text of SLBEU0322");
    EXPECT_EQ(w.machine.files.count(FileOperation::Replace, paths::store), 0);
    EXPECT_EQ(w.error(), "");
    EXPECT_EQ(w.log(), logHeader("Download XML") + xmlLine("<harbrook/>"));
}

struct Refused {
    std::string name;
    std::function<void(StoreWorkstation&)> prepare;
    std::string xml;
    std::string code;
};

void forgetMode(StoreWorkstation& w) {
    w.client.Set_Mode("");
}
void damageStore(StoreWorkstation& w) {
    w.putStore("<harbrook>");
}
void removeStore(StoreWorkstation& w) {
    w.machine.files.remove(paths::store);
}
void removeMapper(StoreWorkstation& w) {
    w.machine.files.remove(paths::fieldMapper);
}
void nothing(StoreWorkstation&) {}

TEST(DownloadXml, FailuresAreLoggedWithTheDocument) {
    const Refused cases[] = {
        {"no mode", forgetMode, "<harbrook/>", "text of SLBEU0264"},
        {"no mode, no XML", forgetMode, "", "text of SLBEU0264"},
        {"no XML", nothing, "", "text of SLBEU0265"},
        {"broken", nothing, "<harbrook><a></harbrook>", "text of SLBEU0265"},
        {"other root", nothing, "<other/>", "text of SLBEU0265"},
        {"other root, no store", removeStore, "<other/>", "text of SLBEU0265"},
        {"damaged store", damageStore, "<harbrook/>", "text of SLBEU0260"},
        {"no mapper", [](StoreWorkstation& w) { removeMapper(w), damageStore(w); }, "<harbrook/>",
         "SLBEU0260"},
    };
    for (const Refused& c : cases) {
        StoreWorkstation w;
        c.prepare(w);
        w.forgetLog();
        const std::string before = w.machine.files.content(paths::store);
        EXPECT_EQ(w.client.DownloadXml(c.xml), c.code) << c.name;
        EXPECT_EQ(w.error(), c.code) << c.name;
        EXPECT_EQ(w.log(), logHeader("Download XML") + errorLine(c.code) + xmlLine(c.xml))
            << c.name;
        EXPECT_EQ(w.machine.files.content(paths::store), before) << c.name;
    }
}

TEST(DownloadXml, ThatCannotCloseAnOrderSavesTheRestAndPurgesNothing) {
    StoreWorkstation w;
    const std::string finished = order("A9", "MU", "20");
    w.putSections(orders(order("A1", "O", "15") + finished));
    const std::string xml = harbrook(orders(order("A1", "O", "35") + order("A2", "O", "15")));
    EXPECT_EQ(w.client.DownloadXml(xml), "text of SLBEU0266");
    EXPECT_EQ(w.sections(), orders(order("A1", "O", "15") + finished + order("A2", "O", "15")));
    EXPECT_EQ(w.error(), "text of SLBEU0266");
    EXPECT_EQ(w.log(), logHeader("Download XML") + errorLine("text of SLBEU0266") + xmlLine(xml));
}

TEST(DownloadXml, LogsWhatTheCheckOfTakenRecordsFinds) {
    StoreWorkstation w;
    const std::string xml =
        harbrook(orders("<record ServiceOrder='A1'><s>15</s><OrderDate/><Description/></record>"));
    EXPECT_EQ(w.client.DownloadXml(xml), downloaded);
    EXPECT_EQ(w.log(), logHeader("Download XML") + errorLine("OrderDate text of SLBEU0327") +
                           errorLine("Description text of SLBEU0327") + xmlLine(xml));
    EXPECT_EQ(w.error(), "");
}

TEST(DownloadXml, PurgesFinishedOrdersButNotTheOneItCloses) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "20") + order("A2", "O", "15", closable("x")) +
                         order("A3", "O", "35") + order("A4", "M", "20")));
    EXPECT_EQ(w.client.DownloadXml(harbrook(orders(order("A2", "O", "35", closable("x"))))),
              downloaded);
    EXPECT_EQ(w.sections(), orders(order("A2", "O", "35", closable("x")) + order("A4", "M", "20")));
    w.client.DownloadXml(harbrook(""));
    EXPECT_EQ(w.sections(), orders(order("A4", "M", "20")));
}

TEST(DownloadXml, WithTooManyErrorsIsAFaultBehindTheMerge) {
    StoreWorkstation w;
    std::string entries;
    for (int i = 0; i < 1002; ++i) {
        entries += entry("Error", "B");
    }
    w.putReport(element("R", element("File", entries)));
    w.putSections(orders(order("A1", "MU", "20")));
    const std::string xml = harbrook(orders(order("A2", "O", "15")));
    EXPECT_THROW(w.client.DownloadXml(xml), Fault);
    EXPECT_EQ(w.sections(), orders(order("A1", "MU", "20") + order("A2", "O", "15")));
    EXPECT_EQ(w.log(), logHeader("Download XML") + xmlLine(xml));
    EXPECT_EQ(w.error(), "1");
}

TEST(DownloadXml, WithoutALogIsAFaultThatKeepsTheMerge) {
    StoreWorkstation w;
    w.machine.files.remove(paths::log);
    EXPECT_THROW(w.client.DownloadXml(harbrook(orders(order("A2", "O", "15")))), Fault);
    EXPECT_NE(w.sections().find("A2"), std::string::npos);
    EXPECT_EQ(w.error(), "1");
}

TEST(UpdateXml, ChangesTheRecordAndLogsNothing) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "O", "15")));
    EXPECT_EQ(w.client.updatexml(harbrook(orders(order("A1", "", "20")))), "");
    EXPECT_EQ(w.sections(), orders(order("A1", "M", "20")));
    EXPECT_EQ(w.error(), "");
    EXPECT_EQ(w.log(), "");
}

TEST(UpdateXml, FailuresAreLogged) {
    const std::string good = harbrook(orders(order("A1", "", "15")));
    const Refused cases[] = {
        {"no XML", nothing, "", "text of SLBEU0267"},
        {"damaged store", damageStore, good, "text of SLBEU0260"},
        {"missing store", removeStore, good, "text of SLBEU0260"},
        {"no mapper", removeMapper, good, "SLBEU0261"},
        {"no store, no mapper", [](StoreWorkstation& w) { removeMapper(w), removeStore(w); }, good,
         "SLBEU0260"},
        {"no record", nothing, harbrook(""), "text of SLBEU0323"},
        {"unknown record", nothing, harbrook(orders(order("A9", "", "15"))), "text of SLBEU0323"},
        {"check fails", nothing,
         harbrook(orders("<record ServiceOrder='A1'><Description/></record>")),
         "Description text of SLBEU0327"},
        {"no mode matters not", forgetMode, "<", "text of SLBEU0267"},
    };
    for (const Refused& c : cases) {
        StoreWorkstation w;
        w.putSections(orders(order("A1", "O", "15", "<Description>x</Description>")));
        c.prepare(w);
        const std::string before = w.machine.files.content(paths::store);
        EXPECT_EQ(w.client.updatexml(c.xml), c.code) << c.name;
        EXPECT_EQ(w.error(), c.code) << c.name;
        EXPECT_EQ(w.log(), logHeader("Update XML") + errorLine(c.code)) << c.name;
        EXPECT_EQ(w.machine.files.content(paths::store), before) << c.name;
    }
}

TEST(UpdateXml, OfASentRecordTakesItsEntriesOutOfTheReport) {
    StoreWorkstation w;
    w.putSections(orders(order("_1", "NU", "15")) +
                  activities(group("_1", activity("10", "NU", "15"))));
    const std::string own = entry("Error", "_1");
    const std::string below = entry("Error", "_1", "10");
    const std::string line = entry("Error", "_1", "10", "1", "Labor");
    w.putReport(element("R", element("File", own + below + line) + element("File", own)));
    w.client.updatexml(harbrook(orders(order("_1", "", "15"))));
    EXPECT_EQ(w.report(), element("R", element("File", line) + "<File/>"));
}

TEST(UpdateXml, LeavesADamagedReportAsItIs) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "15")));
    w.putReport("damaged");
    EXPECT_EQ(w.client.updatexml(harbrook(orders(order("A1", "", "20")))), "");
    EXPECT_EQ(w.sections(), orders(order("A1", "M", "20")));
    EXPECT_EQ(w.report(), "damaged");
}

TEST(AddXml, AddsTheRecordAndLogsNothing) {
    StoreWorkstation w;
    EXPECT_EQ(w.client.AddXml(harbrook(activities(group("A1", activity("_1", "", "15"))))), "");
    EXPECT_NE(w.sections().find(activities(group("A1", activity("_1", "N", "15"), "N"))),
              std::string::npos);
    EXPECT_EQ(w.error(), "");
    EXPECT_EQ(w.log(), "");
}

TEST(AddXml, FailuresAreLogged) {
    const std::string good = harbrook(orders(order("_1", "", "15")));
    const Refused cases[] = {
        {"no mode", forgetMode, good, "text of SLBEU0268"},
        {"no XML", nothing, "", "text of SLBEU0269"},
        {"damaged store", damageStore, good, "text of SLBEU0260"},
        {"no mapper", removeMapper, good, "SLBEU0261"},
        {"no record", nothing, harbrook(""), "text of SLBEU0269"},
        {"known order", nothing, harbrook(orders(order("A1", "", "15"))), "text of SLBEU0324"},
        {"known activity", nothing, harbrook(activities(group("A1", activity("10", "", "15")))),
         "text of SLBEU0325"},
        {"known line", nothing, harbrook(other(costGroup("A1", "10", line("1", "", "x")))),
         "text of SLBEU0326"},
        {"check fails", nothing,
         harbrook(orders("<record ServiceOrder='_1'><s>15</s><EndDate>0</EndDate></record>")),
         "EndDate text of SLBEU0327"},
    };
    for (const Refused& c : cases) {
        StoreWorkstation w;
        w.putSections(orders(order("A1", "O", "15")) +
                      activities(group("A1", activity("10", "O", "15"))) +
                      other(costGroup("A1", "10", line("1", "O", "x"))));
        c.prepare(w);
        const std::string before = w.machine.files.content(paths::store);
        EXPECT_EQ(w.client.AddXml(c.xml), c.code) << c.name;
        EXPECT_EQ(w.error(), c.code) << c.name;
        EXPECT_EQ(w.log(), logHeader("Add XML") + errorLine(c.code)) << c.name;
        EXPECT_EQ(w.machine.files.content(paths::store), before) << c.name;
    }
}

TEST(SaveHra, AppendsTheLineAndLogsNothing) {
    StoreWorkstation w;
    w.putSections(registrations(line("1", "O", "x")) + orders(""));
    EXPECT_EQ(w.client.SaveHra(harbrook(registrations(line("_2", "", "y")))), "");
    EXPECT_EQ(w.sections(), registrations(line("1", "O", "x") + line("_2", "", "y")) + orders(""));
    EXPECT_EQ(w.error(), "");
    EXPECT_EQ(w.log(), "");
}

TEST(SaveHra, FailuresAreNotLogged) {
    const std::string good = "<a>" + line("1", "", "x") + "</a>";
    const Refused cases[] = {
        {"no mode", forgetMode, good, "text of SLBEU0321"},
        {"no XML", nothing, "", "text of SLBEU0265"},
        {"damaged store", damageStore, good, "text of SLBEU0260"},
        {"damaged store, no line", damageStore, "<a/>", "text of SLBEU0260"},
        {"no line", nothing, "<a/>", "text of SLBEU0265"},
    };
    for (const Refused& c : cases) {
        StoreWorkstation w;
        c.prepare(w);
        const std::string before = w.machine.files.content(paths::store);
        EXPECT_EQ(w.client.SaveHra(c.xml), c.code) << c.name;
        EXPECT_EQ(w.error(), c.code) << c.name;
        EXPECT_EQ(w.log(), "") << c.name;
        EXPECT_EQ(w.machine.files.content(paths::store), before) << c.name;
    }
}

TEST(DeleteNode, TakesTheRecordAndItsEntriesOut) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "O", "15") + order("A2", "O", "15")) +
                  activities(group("A1", activity("10", "O", "15"))));
    w.putReport(element("R", element("File", entry("Error", "A1", "10") + entry("Error", "A2"))));
    EXPECT_EQ(w.client.deleteNode(v("A1"), {}, v(""), v("")).text, std::nullopt);
    EXPECT_EQ(w.sections(), orders(order("A2", "O", "15")) + activities(""));
    EXPECT_EQ(w.report(), element("R", element("File", entry("Error", "A2"))));
    EXPECT_EQ(w.error(), "1");
    EXPECT_EQ(w.log(), "");
}

TEST(DeleteNode, WithHraDeletesALabourLineNotAnHourRegistration) {
    StoreWorkstation w;
    const std::string hours = registrations(line("1", "N", "h"));
    w.putSections(labour(costGroup("A1", "10", line("1", "O", "l"))) + hours);
    w.putReport(element("R", element("File", entry("Error", "A1", "10", "1", "Labor"))));
    w.client.deleteNode(v("A1"), v("10"), v("1"), v("hra"));
    EXPECT_EQ(w.sections(), labour("<ServiceOrder ID=\"A1\" Activity=\"10\"/>") + hours);
    EXPECT_EQ(w.report(), element("R", "<File/>"));
}

TEST(DeleteNode, TakesEntriesOutAlsoOfARecordThatIsNotThere) {
    StoreWorkstation w;
    w.putReport(element("R", element("File", entry("Error", "A1", "10"))));
    w.client.deleteNode(v("A1"), v("10"), {}, {});
    EXPECT_EQ(w.report(), element("R", "<File/>"));
}

TEST(DeleteNode, NeedsTheStore) {
    StoreWorkstation w;
    damageStore(w);
    const std::string report = element("R", element("File", entry("Error", "A1")));
    w.putReport(report);
    EXPECT_EQ(w.client.deleteNode(v("A1"), {}, {}, {}).text, std::nullopt);
    EXPECT_EQ(w.error(), "text of SLBEU0260");
    EXPECT_EQ(w.report(), report);
}

TEST(CompleteOrder, SavesOnceAtTheEnd) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "O", "15") + order("A2", "O", "15")) +
                  activities(group("A1", activity("10", "O", "20")) +
                             group("A2", activity("10", "O", "20"))));
    w.machine.files.forgetCalls();
    w.client.CompleteOrder();
    EXPECT_EQ(w.machine.files.count(FileOperation::Replace, paths::store), 1);
    EXPECT_EQ(w.machine.files.count(FileOperation::Read, paths::store), 1);
    EXPECT_NE(w.sections().find(orders(order("A1", "M", "20") + order("A2", "M", "20"))),
              std::string::npos);
    EXPECT_EQ(w.error(), "1");
    removeStore(w);
    w.client.CompleteOrder();
    EXPECT_EQ(w.error(), "text of SLBEU0260");
}

TEST(CreateXMLStringForUpdate, CompletesReturnsMarksAndKeepsTheText) {
    StoreWorkstation w;
    const auto withStates = [](std::string_view order, std::string_view activity) {
        return orders(test::order("A1", order, "20")) +
               activities(group("A1", test::activity("10", activity, "20")));
    };
    w.putSections(orders(order("A1", "O", "15")) +
                  activities(group("A1", activity("10", "M", "20"))));
    const std::string text = w.client.CreateXMLStringForUpdate();
    EXPECT_EQ(text, harbrook(withStates("M", "M")));
    EXPECT_EQ(w.sections(), withStates("MU", "MU"));
    EXPECT_EQ(w.machine.files.content(paths::upload), text);
    EXPECT_EQ(w.error(), "1");
    EXPECT_EQ(w.client.CreateXMLStringForUpdate(), "");
    EXPECT_EQ(w.machine.files.content(paths::upload), text);
}

TEST(CreateXMLStringForUpdate, WritesTheTextBeforeTheFlags) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "M", "15")) +
                  activities(group("A1", activity("10", "M", "15"))));
    w.machine.files.forgetCalls();
    w.client.CreateXMLStringForUpdate();
    std::vector<std::string> written;
    for (const FileCall& call : w.machine.files.calls()) {
        if (call.operation == FileOperation::Replace) {
            written.push_back(call.path);
            EXPECT_EQ(call.durability, platform::Durability::Durable) << call.path;
        }
    }
    EXPECT_EQ(written,
              (std::vector<std::string>{std::string(paths::upload), std::string(paths::store)}));
}

TEST(CreateXMLStringForUpdate, MarksNothingWhenTheTextCannotBeKept) {
    StoreWorkstation w;
    const std::string sections =
        orders(order("A1", "M", "15")) + activities(group("A1", activity("10", "M", "15")));
    w.putSections(sections);
    w.machine.faults.failOn(FileOperation::Replace, 1);
    EXPECT_THROW(w.client.CreateXMLStringForUpdate(), Fault);
    EXPECT_EQ(w.sections(), sections);
}

TEST(CreateXMLStringForUpdate, WithoutAStoreIsEmptyAndNoError) {
    StoreWorkstation w;
    removeStore(w);
    EXPECT_EQ(w.client.CreateXMLStringForUpdate(), "");
    EXPECT_EQ(w.error(), "1");
    damageStore(w);
    EXPECT_EQ(w.client.CreateXMLStringForUpdate(), "");
    EXPECT_EQ(w.error(), "text of SLBEU0260");
}

TEST(DeleteCompletedOrders, KeepsAnOrderWithARefusedCostLine) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "20") + order("A2", "MU", "20")));
    w.putReport(element("R", element("File", entry("Error", "A1", "10", "1", "Other"))));
    EXPECT_EQ(w.client.deleteCompletedOrders("ignored").text, std::nullopt);
    EXPECT_EQ(w.sections(), orders(order("A1", "MU", "20")));
    EXPECT_EQ(w.error(), "1");
}

TEST(DeleteCompletedOrders, PurgesNothingWhileTheReportIsDamaged) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "20")));
    w.putReport("damaged");
    w.client.deleteCompletedOrders("");
    EXPECT_EQ(w.sections(), orders(order("A1", "MU", "20")));
    EXPECT_EQ(w.error(), "1");
}

TEST(DeleteCompletedOrders, NeedsTheStore) {
    StoreWorkstation w;
    damageStore(w);
    w.client.deleteCompletedOrders("");
    EXPECT_EQ(w.error(), "text of SLBEU0260");
}

TEST(DeleteCompletedOrders, KeepsCopiesOfWhatWasNotJustDownloaded) {
    StoreWorkstation w;
    w.putSections(
        orders(order("A1", "MU", "20") + order("A2", "O", "35")) +
        activities(group("A1", activity("10", "O", "20") + activity("20", "NU", "20"), "NU")));
    w.client.deleteCompletedOrders("");
    const std::string start = "<Entry ID=\"";
    const std::string middle =
        "\" Time=\"15/11/2026 11:59:39\" Reason=\"purge\" Section=\"ccsocserv";
    EXPECT_EQ(w.machine.files.content(paths::removed),
              element("Removed",
                      start + "1" + middle + "cordr\" Order=\"A1\" Activity=\"\" CostLine=\"\">" +
                          order("A1", "MU", "20") + "</Entry>" + start + "2" + middle +
                          "cactv\" Order=\"A1\" Activity=\"20\" CostLine=\"\" GroupState=\"NU\">" +
                          activity("20", "NU", "20") + "</Entry>"));
}

TEST(DeleteCompletedOrders, RemovesNothingWhenTheCopiesCannotBeKept) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "20")));
    w.machine.faults.failOn(FileOperation::Replace, 1);
    EXPECT_THROW(w.client.deleteCompletedOrders(""), Fault);
    EXPECT_EQ(w.sections(), orders(order("A1", "MU", "20")));
}

TEST(DeleteCompletedOrders, PutsADamagedFileOfCopiesAside) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "MU", "20")));
    w.machine.files.put(paths::removed, "damaged");
    w.machine.files.put("C:\\Vorn Tandril\\Removed.damaged.xml", "older");
    w.client.deleteCompletedOrders("");
    EXPECT_EQ(w.machine.files.content("C:\\Vorn Tandril\\Removed.damaged.xml"), "older");
    EXPECT_EQ(w.machine.files.content("C:\\Vorn Tandril\\Removed.damaged2.xml"), "damaged");
    EXPECT_NE(w.machine.files.content(paths::removed).find(order("A1", "MU", "20")),
              std::string::npos);
}

TEST(StoreMethods, WorkOnTheFileAsOthersLeftIt) {
    StoreWorkstation w;
    w.putSections(orders(order("A1", "O", "15")));
    w.client.updatexml(harbrook(orders(order("A1", "", "20"))));
    w.putSections(orders(order("A2", "O", "15")));
    EXPECT_EQ(w.client.updatexml(harbrook(orders(order("A1", "", "20")))), "text of SLBEU0323");
    EXPECT_EQ(w.client.updatexml(harbrook(orders(order("A2", "", "20")))), "");
}

}  // namespace
}  // namespace tandril::test
