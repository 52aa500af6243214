#include "store/state.h"

#include <gtest/gtest.h>

#include <string_view>

namespace tandril::store {
namespace {

constexpr std::string_view states[] = {"O", "N", "M", "NU", "MU", "", "X"};

struct Row {
    Event event;
    std::string_view name;
    std::string_view after[std::size(states)];
};

//                                    O     N     M     NU    MU    ""   "X"
constexpr Row rows[] = {
    {Event::Created, "Created", {"N", "N", "N", "N", "N", "N", "N"}},
    {Event::Edited, "Edited", {"M", "N", "M", "N", "M", "", "X"}},
    {Event::Completed, "Completed", {"M", "N", "M", "NU", "MU", "", "X"}},
    {Event::Sent, "Sent", {"O", "NU", "MU", "NU", "MU", "", "X"}},
    {Event::Confirmed, "Confirmed", {"N", "N", "N", "N", "M", "N", "N"}},
    {Event::Resent, "Resent", {"O", "N", "M", "N", "MU", "", "X"}},
};

TEST(State, EveryEventMovesEveryStateOn) {
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < std::size(states); ++i) {
            EXPECT_EQ(stateAfter(row.event, states[i]), row.after[i])
                << row.name << " of \"" << states[i] << '"';
        }
    }
}

struct GroupRow {
    GroupEvent event;
    std::string_view name;
    std::string_view after[std::size(states)];
};

//                                                  O    N     M    NU    MU    ""  "X"
constexpr GroupRow groupRows[] = {
    {GroupEvent::MemberSent, "MemberSent", {"O", "NU", "M", "NU", "MU", "", "X"}},
    {GroupEvent::MemberCreated, "MemberCreated", {"O", "N", "M", "N", "MU", "", "X"}},
    {GroupEvent::Resent, "Resent", {"O", "N", "M", "N", "MU", "", "X"}},
};

TEST(State, GroupsAreNewOrSentAsNewOnly) {
    for (const GroupRow& row : groupRows) {
        for (std::size_t i = 0; i < std::size(states); ++i) {
            EXPECT_EQ(stateAfter(row.event, states[i]), row.after[i])
                << row.name << " of \"" << states[i] << '"';
        }
    }
}

TEST(State, SaysWhatIsSentAndWhatIsNot) {
    struct Case {
        std::string_view state;
        bool isToBeSent, isUnsent, isSent;
    };
    constexpr Case cases[] = {
        {"O", false, false, false}, {"N", true, true, false},   {"M", true, true, false},
        {"NU", false, false, true}, {"MU", false, false, true}, {"", true, false, false},
        {"X", true, false, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(isToBeSent(c.state), c.isToBeSent) << c.state;
        EXPECT_EQ(isUnsent(c.state), c.isUnsent) << c.state;
        EXPECT_EQ(isSent(c.state), c.isSent) << c.state;
    }
}

constexpr std::string_view statuses[] = {"15", "20", "35", "", "10"};

TEST(State, OrdersAreRemovableByNumberAndStatus) {
    constexpr bool ofServer[] = {false, true, false, false, false};
    constexpr bool provisional[] = {true, true, false, false, false};
    for (std::size_t i = 0; i < std::size(statuses); ++i) {
        EXPECT_EQ(isOrderRemovable("A1", statuses[i]), ofServer[i]) << statuses[i];
        EXPECT_EQ(isOrderRemovable("_1", statuses[i]), provisional[i]) << statuses[i];
        EXPECT_EQ(isOrderRemovable("", statuses[i]), ofServer[i]) << statuses[i];
    }
}

TEST(State, ActivitiesAreRemovableByNumbersAndStatus) {
    constexpr bool ofServer[] = {false, true, true, false, false};
    constexpr bool provisional[] = {true, true, true, false, false};
    for (std::size_t i = 0; i < std::size(statuses); ++i) {
        EXPECT_EQ(isActivityRemovable("A1", "10", statuses[i]), ofServer[i]) << statuses[i];
        EXPECT_EQ(isActivityRemovable("_1", "10", statuses[i]), provisional[i]) << statuses[i];
        EXPECT_EQ(isActivityRemovable("A1", "_2", statuses[i]), provisional[i]) << statuses[i];
    }
}

}  // namespace
}  // namespace tandril::store
