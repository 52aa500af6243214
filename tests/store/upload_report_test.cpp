#include "store/upload_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/fault.h"
#include "store/records.h"

namespace tandril::test {
namespace {

using store::RecordKey;
using store::Section;
using store::UploadReport;
using testing::ElementsAre;
using testing::IsEmpty;

std::string file(std::string_view entries) {
    return element("File", entries);
}

std::string filesOf(const UploadReport& report) {
    std::string text;
    for (const xml::Node child : report.document().root().children()) {
        text += xml::toText(child);
    }
    return text;
}

TEST(UploadReport, EntriesAreTheChildrenOfFiles) {
    const UploadReport report =
        reportOf("<Note><x Status='Error'/></Note>" + file(entry("Error", "A1") + "<!-- c -->") +
                 file("<any Status='Completed' Order='A2'/>") + file(""));
    std::vector<std::string> seen;
    for (const store::ReportEntry& entry : report.entries()) {
        seen.emplace_back(entry.order());
    }
    EXPECT_THAT(seen, ElementsAre("A1", "A2"));
    EXPECT_EQ(report.countErrors(), 1U);
}

TEST(UploadReport, AnEntryNamesARecord) {
    struct Case {
        std::string text;
        RecordKey key;
    };
    const Case cases[] = {
        {entry("Completed", "A1"), {Section::Orders, "A1"}},
        {entry("Completed", "A1", "10"), {Section::Activities, "A1", "10"}},
        {entry("Completed", "A1", "10", "1", "Material"), {Section::Material, "A1", "10", "1"}},
        {entry("Completed", "A1", "10", "1", "Labor"), {Section::Labour, "A1", "10", "1"}},
        {entry("Completed", "A1", "10", "1", "Other"), {Section::Other, "A1", "10", "1"}},
        {entry("Completed", "A1", "10", "1", "material"), {Section::Orders, "A1"}},
        {entry("Completed", "A1", "", "1"), {Section::Orders, "A1"}},
        {"<e Order='A1'/>", {Section::Orders, "A1"}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(reportOf(file(c.text)).entries().at(0).key(), c.key) << c.text;
    }
}

TEST(UploadReport, AppendsTheFilesOfAnother) {
    UploadReport report = reportOf(file(entry("Error", "A1")));
    report.append(reportOf("<Note/>" + file(entry("Error", "A2")) + file("")));
    EXPECT_EQ(filesOf(report), file(entry("Error", "A1")) + file(entry("Error", "A2")) + file(""));
    EXPECT_EQ(report.countErrors(), 2U);
}

const std::string mixed = entry("Error", "A1") + entry("Error", "A1", "10") +
                          entry("Error", "A1", "10", "1", "Labor") + entry("Error", "A1", "20") +
                          entry("Completed", "A1", "10", "1", "Other") + entry("Error", "A2");

std::string without(std::initializer_list<std::string> entries) {
    std::string text = mixed;
    for (const std::string& entry : entries) {
        text.erase(text.find(entry), entry.size());
    }
    return file(text);
}

TEST(UploadReport, TakesOutTheEntriesOfExactlyARecord) {
    UploadReport report = reportOf(file(mixed));
    report.removeExact({Section::Orders, "A1"});
    EXPECT_EQ(filesOf(report), without({entry("Error", "A1")}));
    report.removeExact({Section::Labour, "A1", "10", "1"});
    EXPECT_EQ(filesOf(report),
              without({entry("Error", "A1"), entry("Error", "A1", "10", "1", "Labor")}));
    report.removeExact({Section::Labour, "A1", "10", "1"});
    report.removeExact({Section::Material, "A1", "10", "1"});
    EXPECT_EQ(filesOf(report),
              without({entry("Error", "A1"), entry("Error", "A1", "10", "1", "Labor")}));
}

TEST(UploadReport, TakesOutTheEntriesOfAllBelowARecord) {
    UploadReport report = reportOf(file(mixed));
    report.removeBelow({Section::Activities, "A1", "10"});
    EXPECT_EQ(filesOf(report),
              file(entry("Error", "A1") + entry("Error", "A1", "20") + entry("Error", "A2")));
    report.removeBelow({Section::Orders, "A1"});
    EXPECT_EQ(filesOf(report), file(entry("Error", "A2")));
    report.removeBelow({Section::Orders, "A2"});
    EXPECT_EQ(filesOf(report), file(""));
}

TEST(UploadReport, ChangesNothingWhenNoEntryIsMeant) {
    UploadReport report = reportOf(file(mixed));
    report.removeBelow({Section::Orders, "B1"});
    report.removeExact({Section::Activities, "A1", "30"});
    EXPECT_FALSE(report.isChanged());
}

TEST(UploadReport, TakesOutCompletedEntriesAndEmptyFiles) {
    UploadReport report = reportOf(file(entry("Completed", "A1")) + file(mixed) + file(""));
    report.removeCompleted();
    EXPECT_EQ(filesOf(report), without({entry("Completed", "A1", "10", "1", "Other")}));
}

TEST(UploadReport, ListsTheOrderOfEveryError) {
    EXPECT_THAT(store::errorOrders(reportOf(file(mixed))),
                ElementsAre("A1", "A1", "A1", "A1", "A2"));
    EXPECT_THAT(store::errorOrders(reportOf("")), IsEmpty());
}

TEST(UploadReport, MoreThan1001ErrorsAreAFault) {
    std::string entries;
    for (int i = 0; i < 1001; ++i) {
        entries += entry("Error", "A" + std::to_string(i));
    }
    EXPECT_EQ(store::errorOrders(reportOf(file(entries))).size(), 1001U);
    const UploadReport report = reportOf(file(entries + entry("Error", "B")));
    EXPECT_THROW(store::errorOrders(report), Fault);
    EXPECT_EQ(report.countErrors(), 1002U);
}

}  // namespace
}  // namespace tandril::test
