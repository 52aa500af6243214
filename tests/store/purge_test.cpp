#include "store/purge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/records.h"

namespace tandril::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> finished(std::string_view sections,
                                  const std::unordered_set<std::string>& withErrors = {},
                                  const std::unordered_set<std::string>& toKeep = {}) {
    return store::finishedOrders(storeOf(sections), withErrors, toKeep);
}

TEST(Purge, EveryStatusButOpenIsFinished) {
    EXPECT_THAT(
        finished(orders(order("A1", "O", "15") + order("A2", "O", "20") + order("A3", "O", "35") +
                        order("A4", "O", "") + order("A5", "O", "10"))),
        ElementsAre("A2", "A3", "A4", "A5"));
}

TEST(Purge, OrdersWithErrorsAndThoseToKeepStay) {
    EXPECT_THAT(
        finished(orders(order("A1", "MU", "20") + order("A2", "MU", "20") + order("A3", "O", "35")),
                 {"A1"}, {"A3"}),
        ElementsAre("A2"));
}

TEST(Purge, WorkThatWasNeverSentKeepsACompletedOrder) {
    for (const std::string_view state : {"N", "M"}) {
        EXPECT_THAT(finished(orders(order("A1", state, "20"))), IsEmpty());
        EXPECT_THAT(finished(orders(order("A1", "O", "20")) +
                             activities(group("A1", activity("10", state, "20")))),
                    IsEmpty());
        EXPECT_THAT(finished(orders(order("A1", "O", "20")) +
                             other(costGroup("A1", "10", line("1", "O", "")) +
                                   costGroup("A1", "20", line("1", state, "")))),
                    IsEmpty());
        EXPECT_THAT(finished(orders(order("A1", state, "35")) +
                             activities(group("A1", activity("10", state, "20")))),
                    ElementsAre("A1"));
    }
}

TEST(Purge, SentWorkDoesNotKeepAnOrder) {
    EXPECT_THAT(finished(orders(order("A1", "MU", "20")) +
                         activities(group("A1", activity("10", "NU", "20")))),
                ElementsAre("A1"));
}

TEST(Purge, OfTwoOrdersWithTheSameNumberOnlyTheFirstIsSeen) {
    EXPECT_THAT(finished(orders(order("A1", "O", "15") + order("A1", "O", "20"))), IsEmpty());
    EXPECT_THAT(finished(orders(order("A1", "O", "20") + order("A1", "O", "15"))),
                ElementsAre("A1"));
}

}  // namespace
}  // namespace tandril::test
