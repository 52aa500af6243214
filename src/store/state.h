#pragma once

#include <string_view>

namespace tandril::store {

// The change states of orders, activities and cost lines, as their `State` attribute says them.
// "" is a record without the attribute.
namespace state {
inline constexpr std::string_view downloaded = "O";    // as the server sent it
inline constexpr std::string_view created = "N";       // made here, not yet sent
inline constexpr std::string_view modified = "M";      // changed here, not yet sent
inline constexpr std::string_view createdSent = "NU";  // made here, part of an upload text
inline constexpr std::string_view modifiedSent = "MU";
}  // namespace state

// What happens to a record.
enum class Event {
    Created,    // it is added on the workstation
    Edited,     // a form changed it
    Completed,  // an order whose activities are all completed is completed itself
    Sent,       // it became part of an upload text
    Confirmed,  // the server took it, and it stays in the store
    Resent,     // it was sent below a provisional record that was corrected since
};

// What happens to a group of activities or cost lines.
enum class GroupEvent {
    MemberSent,     // a record of it became part of an upload text
    MemberCreated,  // a record of it became, or was added as, a new one
    Resent,         // as for records
};

// The state behind the event. A state that is none of the five is left as it is, unless the event
// gives every record the same one.
std::string_view stateAfter(Event event, std::string_view state);
std::string_view stateAfter(GroupEvent event, std::string_view state);

// Whether a record in that state goes into the next upload text. One without a known state does:
// whoever put it into the store meant it to be known.
bool isToBeSent(std::string_view state);
// Whether it holds work that was never part of an upload text.
bool isUnsent(std::string_view state);
// Whether it is part of an upload text that the server may not have answered.
bool isSent(std::string_view state);

// Whether the server needs an order, or an activity, of that status no more once it has confirmed
// it. Provisional ones are done with early: the server sends them again under their real numbers.
bool isOrderRemovable(std::string_view order, std::string_view status);
bool isActivityRemovable(std::string_view order, std::string_view activity,
                         std::string_view status);

}  // namespace tandril::store
