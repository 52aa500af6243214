#include "store/state.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "store/sections.h"

namespace tandril::store {
namespace {

// The columns of the tables.
constexpr std::array known{state::downloaded, state::created, state::modified, state::createdSent,
                           state::modifiedSent};
constexpr std::string_view unchanged;

struct Row {
    std::array<std::string_view, known.size()> next;
    std::string_view nextOfUnknown = unchanged;
};

using state::created;
using state::createdSent;
using state::downloaded;
using state::modified;
using state::modifiedSent;

// One row per Event. Columns:  O, N, M, NU, MU, anything else.
constexpr std::array events{
    /* Created   */ Row{{created, created, created, created, created}, created},
    /* Edited    */ Row{{modified, created, modified, created, modified}},
    /* Completed */ Row{{modified, created, modified, createdSent, modifiedSent}},
    /* Sent      */ Row{{downloaded, createdSent, modifiedSent, createdSent, modifiedSent}},
    /* Confirmed */ Row{{created, created, created, created, modified}, created},
    /* Resent    */ Row{{downloaded, created, modified, created, modifiedSent}},
};

// One row per GroupEvent: a group is only ever new or sent as new.
constexpr std::array groupEvents{
    /* MemberSent    */ Row{{downloaded, createdSent, modified, createdSent, modifiedSent}},
    /* MemberCreated */ Row{{downloaded, created, modified, created, modifiedSent}},
    /* Resent        */ Row{{downloaded, created, modified, created, modifiedSent}},
};

std::string_view after(const Row& row, std::string_view state) {
    const auto* const column = std::find(known.begin(), known.end(), state);
    if (column != known.end()) {
        return row.next[static_cast<std::size_t>(column - known.begin())];
    }
    return row.nextOfUnknown == unchanged ? state : row.nextOfUnknown;
}

}  // namespace

std::string_view stateAfter(Event event, std::string_view state) {
    return after(events[static_cast<std::size_t>(event)], state);
}

std::string_view stateAfter(GroupEvent event, std::string_view state) {
    return after(groupEvents[static_cast<std::size_t>(event)], state);
}

bool isToBeSent(std::string_view state) {
    return state != downloaded && !isSent(state);
}

bool isUnsent(std::string_view state) {
    return state == created || state == modified;
}

bool isSent(std::string_view state) {
    return state == createdSent || state == modifiedSent;
}

bool isOrderRemovable(std::string_view order, std::string_view status) {
    return status == status::completed || (status == status::open && isProvisional(order));
}

bool isActivityRemovable(std::string_view order, std::string_view activity,
                         std::string_view status) {
    return status == status::completed || status == status::closed ||
           (status == status::open && (isProvisional(order) || isProvisional(activity)));
}

}  // namespace tandril::store
