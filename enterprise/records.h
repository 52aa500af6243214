#pragma once

#include <string>
#include <string_view>
#include <tuple>

namespace tandril::enterprise {

// The kinds of records that an upload report speaks of.
enum class Kind { Order, Activity, Material, Labour, Other };

// The section of the order document that holds the kind.
const char* sectionOf(Kind kind);

// The word for the kind in an upload report; "" for orders and activities.
const char* costTypeOf(Kind kind);

// Which record of which order, in the numbers of the one who sent it. Parts that a kind does not
// have are "". Hour registrations are labour lines without order and activity.
struct RecordKey {
    Kind kind = Kind::Order;
    std::string order;
    std::string activity;
    std::string line;

    friend bool operator<(const RecordKey& a, const RecordKey& b) {
        return std::tie(a.kind, a.order, a.activity, a.line) <
               std::tie(b.kind, b.order, b.activity, b.line);
    }
};

// Whether the number was given by an engineer's computer, until the office gives a real one.
bool isProvisional(std::string_view number);

}  // namespace tandril::enterprise
