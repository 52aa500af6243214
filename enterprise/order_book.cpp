#include "enterprise/order_book.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "enterprise/nodes.h"
#include "enterprise/numbers.h"

namespace tandril::enterprise {
namespace {

using Node = OrderBook::Node;

constexpr std::array lineKinds{Kind::Material, Kind::Labour, Kind::Other};

Node findRecord(Node parent, const char* key, const std::string& number) {
    if (number.empty()) return {};
    return parent.find_child([&](Node record) {
        return attribute(record, key) == number || attribute(record, "From") == number;
    });
}

// The highest of the records' numbers; texts that are no number do not count.
int highestNumber(const std::vector<Node>& records, const char* key) {
    int highest = 0;
    for (const Node record : records) {
        const std::string text = attribute(record, key);
        int number = 0;
        const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
        if (parsed.ptr == text.data() + text.size()) highest = std::max(highest, number);
    }
    return highest;
}

void renumber(Node record, const char* key, int number) {
    setAttribute(record, "From", attribute(record, key));
    setAttribute(record, key, std::to_string(number));
}

// Activities and lines are numbered in tens.
void renumberProvisional(const std::vector<Node>& records, const char* key) {
    for (const Node record : records) {
        if (!isProvisional(attribute(record, key))) continue;
        renumber(record, key, highestNumber(records, key) / 10 * 10 + 10);
    }
}

void forgetFrom(const std::vector<Node>& records) {
    for (Node record : records) record.remove_attribute("From");
}

}  // namespace

Node OrderBook::order(const std::string& number) const {
    return findRecord(section(Kind::Order), "ServiceOrder", number);
}

Node OrderBook::activityGroup(Node order) const {
    return section(Kind::Activity)
        .find_child_by_attribute("ID", order.attribute("ServiceOrder").value());
}

Node OrderBook::activity(Node order, const std::string& number) const {
    return findRecord(activityGroup(order), "Activity", number);
}

Node OrderBook::lineGroup(Kind kind, Node order, Node activity) const {
    return section(kind).find_child([&](Node group) {
        return group.type() == pugi::node_element &&
               attribute(group, "ID") == attribute(order, "ServiceOrder") &&
               attribute(group, "Activity") == attribute(activity, "Activity");
    });
}

Node OrderBook::line(Node group, const std::string& number) const {
    return findRecord(group, "LineNumber", number);
}

Node OrderBook::addOrder(const std::string& number) const {
    Node record = section(Kind::Order).append_child("record");
    setAttribute(record, "ServiceOrder", number);
    return record;
}

Node OrderBook::addActivity(Node order, const std::string& number) const {
    Node group = activityGroup(order);
    if (!group) {
        group = section(Kind::Activity).append_child("ServiceOrder");
        setAttribute(group, "ID", attribute(order, "ServiceOrder"));
    }
    Node record = group.append_child("record");
    setAttribute(record, "Activity", number);
    return record;
}

Node OrderBook::addLine(Kind kind, Node order, Node activity, const std::string& number) const {
    Node group = lineGroup(kind, order, activity);
    if (!group) {
        group = section(kind).append_child("ServiceOrder");
        setAttribute(group, "ID", attribute(order, "ServiceOrder"));
        setAttribute(group, "Activity", attribute(activity, "Activity"));
    }
    Node record = group.append_child("record");
    setAttribute(record, "LineNumber", number);
    return record;
}

std::vector<Node> OrderBook::orders() const {
    return elements(section(Kind::Order));
}

std::vector<Node> OrderBook::activities(Node order) const {
    return elements(activityGroup(order));
}

std::vector<Node> OrderBook::lineGroups(Node order) const {
    std::vector<Node> groups;
    for (const Kind kind : lineKinds) {
        for (const Node group : elements(section(kind))) {
            if (attribute(group, "ID") == attribute(order, "ServiceOrder")) groups.push_back(group);
        }
    }
    return groups;
}

double OrderBook::hoursOnDay(const std::string& employee, std::string_view day, Node except) const {
    double sum = 0;
    for (const Node group : elements(section(Kind::Labour))) {
        for (const Node line : elements(group)) {
            const std::string_view start = line.child_value("StartDate");
            if (line == except || line.child_value("Employee") != employee ||
                start.substr(0, 8) != day) {
                continue;
            }
            sum += parseNumber(line.child_value("Hours")).value_or(0);
        }
    }
    return sum;
}

std::vector<Node> OrderBook::lineGroups(Node order, Node activity) const {
    std::vector<Node> groups = lineGroups(order);
    std::erase_if(groups, [activity](Node group) {
        return attribute(group, "Activity") != attribute(activity, "Activity");
    });
    return groups;
}

void OrderBook::giveNumbers(Node order) const {
    const std::vector<Node> groups = lineGroups(order);
    const Node activities = activityGroup(order);
    renumber(order, "ServiceOrder", highestNumber(orders(), "ServiceOrder") + 1);
    const std::string number = attribute(order, "ServiceOrder");
    if (activities) setAttribute(activities, "ID", number);
    for (const Node group : groups) setAttribute(group, "ID", number);
    for (const Node activity : this->activities(order)) giveNumbers(order, activity);
}

void OrderBook::giveNumbers(Node order, Node activity) const {
    const std::vector<Node> groups = lineGroups(order, activity);
    if (isProvisional(attribute(activity, "Activity"))) {
        const int highest = highestNumber(activities(order), "Activity");
        renumber(activity, "Activity", highest / 10 * 10 + 10);
    }
    if (!activity.attribute("From")) return;
    for (const Node group : groups) {
        setAttribute(group, "Activity", attribute(activity, "Activity"));
        renumberProvisional(elements(group), "LineNumber");
    }
}

void OrderBook::forgetProvisionalNumbers(Node order) const {
    order.remove_attribute("From");
    for (const Node activity : activities(order)) forgetProvisionalNumbers(order, activity);
}

void OrderBook::forgetProvisionalNumbers(Node order, Node activity) const {
    activity.remove_attribute("From");
    for (const Node group : lineGroups(order, activity)) forgetFrom(elements(group));
}

void OrderBook::replaceFields(Node target, Node source) {
    while (target.first_child()) target.remove_child(target.first_child());
    for (const Node field : elements(source)) target.append_copy(field);
}

}  // namespace tandril::enterprise
