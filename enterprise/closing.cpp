#include "enterprise/closing.h"

#include <algorithm>
#include <tuple>
#include <vector>

#include "enterprise/nodes.h"
#include "enterprise/order_book.h"

namespace tandril::enterprise {
namespace {

using Node = pugi::xml_node;

constexpr std::size_t ordersThatStayOpen = 5;

bool isStatus(Node record, const char* field, std::string_view status) {
    return record.child_value(field) == status;
}

// Lower numbers are more urgent, so the greatest rank is the one to miss least.
auto rank(Node order) {
    return std::tuple<std::string, std::string, std::string>(order.child_value("ProblemPriority"),
                                                             order.child_value("PlannedStartTime"),
                                                             attribute(order, "ServiceOrder"));
}

}  // namespace

void closeAnOrder(Memory& memory, const std::string& stamp) {
    const OrderBook book(memory.book());
    std::vector<Node> open;
    std::vector<Node> untouched;
    for (const Node order : book.orders()) {
        if (!isStatus(order, "OrderStatus", "15")) continue;
        open.push_back(order);
        if (!order.attribute("Touched")) untouched.push_back(order);
    }
    if (untouched.empty() || open.size() <= ordersThatStayOpen) return;
    Node order = std::ranges::max(untouched, {}, rank);
    order.child("OrderStatus").text().set("35");
    order.child("ClosingDate").text().set(stamp.c_str());
    order.child("CancelReason").text().set("CUS");
    setAttribute(order, "Closed", "unheard");
    for (const Node activity : book.activities(order)) {
        if (isStatus(activity, "ActivityStatus", "15")) {
            activity.child("ActivityStatus").text().set("35");
        }
    }
}

bool markClosingsHeard(Memory& memory) {
    bool any = false;
    for (const Node order : OrderBook(memory.book()).orders()) {
        if (attribute(order, "Closed") != "unheard") continue;
        setAttribute(order, "Closed", "heard");
        any = true;
    }
    return any;
}

}  // namespace tandril::enterprise
