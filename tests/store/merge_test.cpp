#include "store/merge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/records.h"

namespace tandril::test {
namespace {

using store::MergeResult;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

struct Merged {
    MergeResult result;
    std::string sections;
    bool isChanged;
    std::vector<std::string> checked;
};

Merged merged(std::string_view before, std::string_view downloaded) {
    store::OrderStore store = storeOf(before);
    const std::string text = element("harbrook", downloaded);
    ScriptedCheck check;
    MergeResult result = store::merge(store, xml::checked(text).value(), check);
    return {std::move(result), sectionsOf(store), store.isChanged(), check.asked};
}

TEST(Merge, TakesANewOpenOrder) {
    const Merged m = merged(orders(order("A1", "M", "20")), orders(order("A2", "O", "15")));
    EXPECT_EQ(m.sections, orders(order("A1", "M", "20") + order("A2", "O", "15")));
    EXPECT_TRUE(m.result.tookOrders);
    EXPECT_FALSE(m.result.hasFailed);
    EXPECT_THAT(m.checked, ElementsAre("ccsocservcordr " + order("A2", "O", "15")));
}

TEST(Merge, DropsANewOrderThatIsNotOpen) {
    for (const std::string_view status : {"20", "35", "", "1 5"}) {
        const Merged m = merged(orders(""), orders(order("A2", "O", status)));
        EXPECT_EQ(m.sections, orders("")) << status;
        EXPECT_FALSE(m.result.tookAnything());
        EXPECT_FALSE(m.isChanged);
    }
}

TEST(Merge, KeepsEverythingOfAKnownOrder) {
    const std::string local = orders(order("A1", "M", "15", "<Description>mine</Description>"));
    const Merged m =
        merged(local, orders(order("A1", "O", "20", "<Description>theirs</Description>")));
    EXPECT_EQ(m.sections, local);
    EXPECT_FALSE(m.result.tookAnything());
    EXPECT_THAT(m.checked, IsEmpty());
}

std::string closedBy(std::string_view status, std::string_view own, std::string_view last) {
    std::string fields;
    for (int field = 1; field <= 22; ++field) {
        fields += element("f" + std::to_string(field), field > 20 ? last : own);
    }
    return order("A1", "M", status, fields);
}

TEST(Merge, ClosesAKnownOrderWithItsTwoClosingFields) {
    const Merged m = merged(orders(order("A1", "M", "15", closable("mine"))),
                            orders(order("A1", "O", "35", closable("theirs"))));
    EXPECT_EQ(m.sections, orders(closedBy("35", "mine", "theirs")));
    EXPECT_TRUE(m.result.tookOrders);
    EXPECT_THAT(m.result.closedOrders, UnorderedElementsAre("A1"));
    EXPECT_THAT(m.checked, IsEmpty());
}

TEST(Merge, ClosingAClosedOrderAgainTakesNothing) {
    const std::string closed = orders(closedBy("35", "mine", "theirs"));
    const Merged m = merged(closed, orders(order("A1", "O", "35", closable("theirs"))));
    EXPECT_FALSE(m.result.tookAnything());
    EXPECT_FALSE(m.isChanged);
    EXPECT_THAT(m.result.closedOrders, IsEmpty());
}

TEST(Merge, NewClosingTextsOfAClosedOrderAreTaken) {
    const Merged m = merged(orders(closedBy("35", "mine", "old")),
                            orders(order("A1", "O", "35", closable("new"))));
    EXPECT_EQ(m.sections, orders(closedBy("35", "mine", "new")));
    EXPECT_THAT(m.result.closedOrders, UnorderedElementsAre("A1"));
}

TEST(Merge, FailsToCloseAnOrderWithTooFewFieldsAndGoesOn) {
    const std::string shortOrder = order("A1", "O", "15", "<a/>");
    const std::string longOrder = order("A1", "O", "15", closable("x"));
    const std::string shortClose = order("A1", "O", "35");
    const std::string longClose = order("A1", "O", "35", closable("y"));
    for (const auto& [own, downloaded] :
         {std::pair(shortOrder, longClose), std::pair(longOrder, shortClose),
          std::pair(shortOrder, shortClose)}) {
        const Merged m = merged(orders(own), orders(downloaded + order("A2", "O", "15")));
        EXPECT_TRUE(m.result.hasFailed);
        EXPECT_EQ(m.sections, orders(own + order("A2", "O", "15")));
        EXPECT_THAT(m.result.closedOrders, IsEmpty());
    }
}

TEST(Merge, AClosedOrderWithTooFewFieldsIsNoFailure) {
    const std::string closed = orders(order("A1", "O", "35"));
    const Merged m = merged(closed, orders(order("A1", "O", "35", closable("y"))));
    EXPECT_FALSE(m.result.hasFailed);
    EXPECT_EQ(m.sections, closed);
}

TEST(Merge, IgnoresActivitiesAndLinesOfUnknownOrders) {
    const Merged m = merged(orders(""), activities(group("A1", activity("10", "O", "15"))) +
                                            material(costGroup("A1", "10", line("1", "O", "x"))));
    EXPECT_EQ(m.sections, orders(""));
    EXPECT_FALSE(m.result.tookAnything());
}

TEST(Merge, AppendsAWholeActivityGroupAndReopensTheOrder) {
    const std::string groups = group("A1", activity("10", "O", "15") + activity("20", "N", "20"));
    const Merged m = merged(orders(order("A1", "MU", "20")) + activities(""), activities(groups));
    EXPECT_EQ(m.sections, orders(order("A1", "MU", "15")) + activities(groups));
    EXPECT_TRUE(m.result.tookActivities);
    EXPECT_THAT(m.checked, ElementsAre("ccsocservcactv " + activity("10", "O", "15"),
                                       "ccsocservcactv " + activity("20", "N", "20")));
}

TEST(Merge, AnEmptyActivityGroupDoesNotReopenTheOrder) {
    const Merged m =
        merged(orders(order("A1", "M", "20")) + activities(""), activities(group("A1", "")));
    EXPECT_EQ(m.sections, orders(order("A1", "M", "20")) + activities(group("A1", "")));
    EXPECT_TRUE(m.result.tookActivities);
}

TEST(Merge, ANewActivityReopensACompletedOrderOnly) {
    for (const auto& [status, after] :
         {std::pair("20", "15"), std::pair("15", "15"), std::pair("35", "35")}) {
        const Merged m = merged(
            orders(order("A1", "O", status)) + activities(group("A1", activity("10", "M", "20"))),
            activities(group("A1", activity("10", "O", "15") + activity("30", "O", "15"))));
        EXPECT_EQ(m.sections, orders(order("A1", "O", after)) +
                                  activities(group("A1", activity("10", "M", "20") +
                                                             activity("30", "O", "15"))));
    }
}

TEST(Merge, KnownActivitiesAreLeftUntouched) {
    const std::string before =
        orders(order("A1", "M", "20")) + activities(group("A1", activity("10", "MU", "20")));
    const Merged m = merged(before, activities(group("A1", activity("10", "O", "15"))));
    EXPECT_EQ(m.sections, before);
    EXPECT_FALSE(m.result.tookAnything());
}

TEST(Merge, TheServersTextsWinInKnownCostLines) {
    const std::string start = orders(order("A1", "O", "15"));
    const std::string local =
        "<record LineNumber=\"1\" State=\"M\"><Description>mine</Description><Own>x</Own></record>";
    const std::string sent =
        "<record LineNumber=\"1\" State=\"O\"><Extra>no</Extra>"
        "<Description>theirs</Description></record>";
    const std::string after =
        "<record LineNumber=\"1\" "
        "State=\"M\"><Description>theirs</Description><Own>x</Own></record>";
    const Merged m = merged(start + labour(costGroup("A1", "10", local)),
                            labour(costGroup("A1", "10", sent + line("2", "O", "new"))));
    EXPECT_EQ(m.sections, start + labour(costGroup("A1", "10", after + line("2", "O", "new"))));
    EXPECT_TRUE(m.result.tookLabour);
    EXPECT_FALSE(m.result.tookMaterial);
    EXPECT_FALSE(m.result.tookOther);
    EXPECT_THAT(m.checked,
                ElementsAre("ccsocservclabr " + after, "ccsocservclabr " + line("2", "O", "new")));
}

TEST(Merge, EqualTextsOfCostLinesTakeNothing) {
    const std::string before =
        orders(order("A1", "O", "15")) + other(costGroup("A1", "10", line("1", "MU", "same")));
    const Merged m = merged(before, other(costGroup("A1", "10", line("1", "O", "same"))));
    EXPECT_EQ(m.sections, before);
    EXPECT_FALSE(m.result.tookAnything());
    EXPECT_FALSE(m.isChanged);
    EXPECT_THAT(m.checked, IsEmpty());
}

TEST(Merge, AppendsAWholeGroupOfCostLines) {
    const std::string lines = costGroup("A1", "30", line("1", "O", "x"), "O");
    const Merged m =
        merged(orders(order("A1", "O", "15")) + activities(group("A1", activity("30", "O", "20"))),
               material(lines));
    EXPECT_EQ(m.sections, orders(order("A1", "O", "15")) +
                              activities(group("A1", activity("30", "O", "20"))) + material(lines));
    EXPECT_TRUE(m.result.tookMaterial);
    EXPECT_THAT(m.checked, ElementsAre("ccsocservcmatl " + line("1", "O", "x") + " activity 20"));
}

TEST(Merge, ALineThatIsChangedTwiceIsCheckedEachTimeAsItThenStands) {
    const Merged m =
        merged(orders(order("A1", "O", "15")) + other(costGroup("A1", "10", line("1", "O", "a"))),
               other(costGroup("A1", "10", line("1", "O", "b") + line("1", "O", "c"))));
    EXPECT_THAT(m.checked, ElementsAre("ccsocservcothr " + line("1", "O", "b"),
                                       "ccsocservcothr " + line("1", "O", "c")));
}

TEST(Merge, TellsOfEachRecordWhatCouldNotBeLookedUpFirst) {
    using store::CheckFinding;
    store::OrderStore store = storeOf(orders(""));
    const std::string text =
        element("harbrook", orders(order("A1", "O", "15") + order("A2", "O", "15")));
    ScriptedCheck check;
    check.findings = {{{CheckFinding::Kind::Failure, "a"},
                       {CheckFinding::Kind::LookUpFault, "b"},
                       {CheckFinding::Kind::Failure, "c"}},
                      {{CheckFinding::Kind::LookUpFault, "d"}}};
    EXPECT_THAT(store::merge(store, xml::checked(text).value(), check).findings,
                ElementsAre("b", "a", "c", "d"));
}

TEST(Merge, NeverTakesHourRegistrations) {
    const Merged m = merged(orders("") + registrations(""), registrations(line("1", "N", "x")));
    EXPECT_EQ(m.sections, orders("") + registrations(""));
    EXPECT_FALSE(m.result.tookAnything());
}

TEST(Merge, ANewOrderBringsItsActivitiesAndLinesAlong) {
    const std::string all = orders(order("A1", "O", "15")) +
                            activities(group("A1", activity("10", "O", "15"), "O")) +
                            material(costGroup("A1", "10", line("1", "O", "m"), "O")) +
                            labour(costGroup("A1", "10", line("1", "O", "l"), "O")) +
                            other(costGroup("A1", "10", line("1", "O", "o"), "O"));
    const Merged m = merged("", all);
    EXPECT_EQ(m.sections, all);
    EXPECT_EQ(m.checked.size(), 5U);
    const Merged again = merged(all, all);
    EXPECT_FALSE(again.result.tookAnything());
    EXPECT_FALSE(again.isChanged);
}

}  // namespace
}  // namespace tandril::test
