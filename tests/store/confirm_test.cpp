#include "store/confirm.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/records.h"

namespace tandril::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Confirmed {
    std::string sections;
    std::string report;
    std::vector<std::string> leaving;
};

Confirmed confirmed(std::string_view sections, std::string_view entries) {
    store::OrderStore store = storeOf(sections);
    store::UploadReport report = reportOf(element("File", entries));
    std::vector<std::string> leaving;
    store::applyConfirmations(store, report, [&](const store::RecordKey&, xml::Node record) {
        leaving.push_back(xml::toText(record));
    });
    return {sectionsOf(store), xml::toText(report.document().root()), leaving};
}

TEST(Confirm, ACompletedOrderLeavesWithEverything) {
    const Confirmed c = confirmed(orders(order("A1", "MU", "20")) +
                                      activities(group("A1", activity("10", "O", "20"))) +
                                      material(costGroup("A1", "10", line("1", "NU", "x"))),
                                  entry("Completed", "A1"));
    EXPECT_EQ(c.sections, orders("") + activities("") + material(""));
    EXPECT_EQ(c.report, "<Report/>");
    EXPECT_THAT(c.leaving, ElementsAre(order("A1", "MU", "20"), activity("10", "O", "20"),
                                       line("1", "NU", "x")));
}

TEST(Confirm, AnyOfItsRecordsTakesACompletedOrderAlong) {
    EXPECT_EQ(confirmed(orders(order("A1", "MU", "20")) +
                            activities(group("A1", activity("10", "MU", "15"))),
                        entry("Completed", "A1", "10"))
                  .sections,
              orders("") + activities(""));
}

TEST(Confirm, AnOpenOrderLeavesWhenItIsProvisionalOnly) {
    EXPECT_EQ(confirmed(orders(order("_1", "NU", "15")), entry("Completed", "_1")).sections,
              orders(""));
    EXPECT_EQ(confirmed(orders(order("A1", "MU", "15")), entry("Completed", "A1")).sections,
              orders(order("A1", "M", "15")));
}

TEST(Confirm, ResetsTheFlagOfWhatStays) {
    for (const auto& [before, after] :
         {std::pair("MU", "M"), {"NU", "N"}, {"O", "N"}, {"M", "N"}, {"N", "N"}}) {
        EXPECT_EQ(confirmed(orders(order("A1", before, "35")), entry("Completed", "A1")).sections,
                  orders(order("A1", after, "35")));
    }
    EXPECT_EQ(confirmed(orders("<record ServiceOrder=\"A1\"/>"), entry("Completed", "A1")).sections,
              orders("<record ServiceOrder=\"A1\" State=\"N\"/>"));
}

TEST(Confirm, AFlagThatIsNewThenMakesTheGroupNewAgain) {
    const std::string open = orders(order("A1", "O", "15"));
    EXPECT_EQ(confirmed(open + activities(group("A1", activity("10", "NU", "15"), "NU")),
                        entry("Completed", "A1", "10"))
                  .sections,
              open + activities(group("A1", activity("10", "N", "15"), "N")));
    EXPECT_EQ(confirmed(open + activities(group("A1", activity("10", "N", "15"), "NU")),
                        entry("Completed", "A1", "10"))
                  .sections,
              open + activities(group("A1", activity("10", "N", "15"), "N")));
    EXPECT_EQ(confirmed(open + other(costGroup("A1", "10", line("1", "MU", "x"), "NU")),
                        entry("Completed", "A1", "10", "1", "Other"))
                  .sections,
              open + other(costGroup("A1", "10", line("1", "M", "x"), "NU")));
}

TEST(Confirm, AFinishedActivityLeavesWithItsLinesAndAnEmptyGroup) {
    const std::string open = orders(order("A1", "O", "15"));
    for (const std::string_view status : {"20", "35"}) {
        const Confirmed c = confirmed(
            open + activities(group("A1", activity("10", "MU", status))) +
                labour(costGroup("A1", "10", line("1", "NU", "x")) + costGroup("A1", "20", "")),
            entry("Completed", "A1", "10", "1", "Labor"));
        EXPECT_EQ(c.sections, open + activities("") + labour(costGroup("A1", "20", "")));
        EXPECT_THAT(c.leaving, ElementsAre(activity("10", "MU", status), line("1", "NU", "x")));
    }
}

TEST(Confirm, AnOpenActivityLeavesWhenANumberIsProvisional) {
    const std::string closed = orders(order("_1", "NU", "35"));
    EXPECT_EQ(confirmed(closed + activities(group("_1", activity("10", "NU", "15"))),
                        entry("Completed", "_1", "10"))
                  .sections,
              closed + activities(""));
    const std::string open = orders(order("A1", "O", "15"));
    EXPECT_EQ(confirmed(open + activities(group("A1", activity("_2", "NU", "15"))),
                        entry("Completed", "A1", "_2"))
                  .sections,
              open + activities(""));
}

TEST(Confirm, ARefusedRecordKeepsItsOrder) {
    const std::string before =
        orders(order("A1", "MU", "20")) + activities(group("A1", activity("10", "MU", "20")));
    for (const std::string& refused :
         {entry("Error", "A1"), entry("Error", "A1", "10"),
          entry("Error", "A1", "10", "1", "Labor"), entry("Error", "A1", "99")}) {
        for (const std::string& entries :
             {entry("Completed", "A1") + refused, refused + entry("Completed", "A1")}) {
            const Confirmed c = confirmed(before, entries);
            EXPECT_EQ(c.sections, orders(order("A1", "M", "20")) +
                                      activities(group("A1", activity("10", "MU", "20"))));
            EXPECT_EQ(c.report, element("Report", element("File", refused)));
            EXPECT_THAT(c.leaving, IsEmpty());
        }
    }
}

TEST(Confirm, ARefusedRecordKeepsItsActivity) {
    const std::string before =
        orders(order("A1", "O", "15")) +
        activities(group("A1", activity("10", "MU", "20") + activity("20", "MU", "20")));
    const Confirmed c =
        confirmed(before, entry("Completed", "A1", "10") + entry("Completed", "A1", "20") +
                              entry("Error", "A1", "10", "1", "Other"));
    EXPECT_EQ(c.sections,
              orders(order("A1", "O", "15")) + activities(group("A1", activity("10", "M", "20"))));
}

TEST(Confirm, AnUnknownCostTypeStandsForTheOrder) {
    EXPECT_EQ(confirmed(orders(order("A1", "MU", "15")) +
                            activities(group("A1", activity("10", "MU", "15"))),
                        entry("Completed", "A1", "10", "1", "labour"))
                  .sections,
              orders(order("A1", "M", "15")) + activities(group("A1", activity("10", "MU", "15"))));
}

TEST(Confirm, AnUnknownCostTypeLeavesTheActivityWhereItIs) {
    const std::string finished = activities(group("A1", activity("10", "MU", "20")));
    const Confirmed c = confirmed(orders(order("A1", "MU", "15")) + finished,
                                  entry("Completed", "A1", "10", "1", "labour"));
    EXPECT_EQ(c.sections, orders(order("A1", "M", "15")) + finished);
    EXPECT_THAT(c.leaving, IsEmpty());
}

TEST(Confirm, OfARecordThatIsNotThereIsTakenOutOfTheReport) {
    const Confirmed c =
        confirmed(orders(""), entry("Completed", "A1") + entry("Completed", "A1", "10") +
                                  entry("Completed", "A1", "10", "1", "Other"));
    EXPECT_EQ(c.sections, orders(""));
    EXPECT_EQ(c.report, "<Report/>");
}

TEST(Confirm, OtherStatusesAreLeftAlone) {
    const std::string entries = entry("completed", "A1") + entry("", "A1");
    const Confirmed c = confirmed(orders(order("A1", "MU", "20")), entries);
    EXPECT_EQ(c.sections, orders(order("A1", "MU", "20")));
    EXPECT_EQ(c.report, element("Report", element("File", entries)));
}

}  // namespace
}  // namespace tandril::test
