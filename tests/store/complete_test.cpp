#include "store/complete.h"

#include <gtest/gtest.h>

#include "store/records.h"

namespace tandril::test {
namespace {

std::string completed(std::string_view sections) {
    store::OrderStore store = storeOf(sections);
    store::completeOrders(store);
    return sectionsOf(store);
}

const std::string allDone =
    activities(group("A1", activity("10", "O", "20") + activity("20", "M", "20")));

TEST(Complete, AnOpenOrderWithAllActivitiesCompleted) {
    EXPECT_EQ(completed(orders(order("A1", "O", "15")) + allDone),
              orders(order("A1", "M", "20")) + allDone);
}

TEST(Complete, KeepsTheStateOfEveryOrderButAnUnchangedOne) {
    for (const std::string_view state : {"N", "M", "NU", "MU", "X"}) {
        EXPECT_EQ(completed(orders(order("A1", state, "15")) + allDone),
                  orders(order("A1", state, "20")) + allDone);
    }
}

TEST(Complete, LeavesOrdersThatAreNotOpen) {
    for (const std::string_view status : {"20", "35", "", "10"}) {
        const std::string before = orders(order("A1", "O", status)) + allDone;
        EXPECT_EQ(completed(before), before);
    }
}

TEST(Complete, LeavesAnOrderWithAnActivityThatIsNotCompleted) {
    for (const std::string_view status : {"15", "35", ""}) {
        const std::string before =
            orders(order("A1", "O", "15")) +
            activities(group("A1", activity("10", "O", "20") + activity("20", "O", status)));
        EXPECT_EQ(completed(before), before);
    }
}

TEST(Complete, LeavesAnOrderWithoutActivities) {
    for (const std::string& groups : {std::string(), group("A1", ""), group("A2", "<a/>")}) {
        const std::string before = orders(order("A1", "O", "15")) + activities(groups);
        EXPECT_EQ(completed(before), before);
    }
}

}  // namespace
}  // namespace tandril::test
