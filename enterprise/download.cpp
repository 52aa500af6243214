#include "enterprise/download.h"

#include "enterprise/nodes.h"
#include "enterprise/order_book.h"

namespace tandril::enterprise {
namespace {

using Node = pugi::xml_node;

bool isOpen(Node record) {
    return std::string_view(record.first_child().child_value()) == "15";
}

bool isHandedOut(Node order) {
    return !isProvisional(attribute(order, "ServiceOrder")) &&
           std::string_view(order.child_value("OrderStatus")) != "20";
}

void addRecord(Node parent, const char* key, Node record) {
    Node copy = parent.append_child("record");
    setAttribute(copy, key, attribute(record, key));
    setAttribute(copy, "State", "O");
    OrderBook::replaceFields(copy, record);
}

Node addGroup(Node section, const std::string& order) {
    Node group = section.append_child("ServiceOrder");
    setAttribute(group, "ID", order);
    return group;
}

void addLines(Node section, Kind kind, Node lines, const Memory& memory) {
    Node group = addGroup(section, attribute(lines, "ID"));
    setAttribute(group, "Activity", attribute(lines, "Activity"));
    setAttribute(group, "State", "O");
    for (const Node line : elements(lines)) {
        const RecordKey key{kind, attribute(lines, "ID"), attribute(lines, "Activity"),
                            attribute(line, "LineNumber")};
        if (!isProvisional(key.line) && !memory.isRefused(key)) {
            addRecord(group, "LineNumber", line);
        }
    }
    if (!group.first_child()) section.remove_child(group);
}

}  // namespace

std::string buildDownload(const Memory& memory) {
    const OrderBook book(memory.book());
    pugi::xml_document document;
    Node root = document.append_child("harbrook");
    for (const Node section : elements(memory.book())) root.append_child(section.name());

    const auto addLinesOf = [&](Node order, Node activity) {
        for (const Kind kind : {Kind::Material, Kind::Labour, Kind::Other}) {
            if (const Node lines = book.lineGroup(kind, order, activity)) {
                addLines(root.child(sectionOf(kind)), kind, lines, memory);
            }
        }
    };
    for (const Node order : book.orders()) {
        if (!isHandedOut(order)) continue;
        addRecord(root.child(sectionOf(Kind::Order)), "ServiceOrder", order);
        Node group =
            addGroup(root.child(sectionOf(Kind::Activity)), attribute(order, "ServiceOrder"));
        setAttribute(group, "State", "O");
        for (const Node activity : book.activities(order)) {
            if (isProvisional(attribute(activity, "Activity"))) continue;
            if (isOpen(order) && !isOpen(activity)) continue;
            addRecord(group, "Activity", activity);
            addLinesOf(order, activity);
        }
    }
    addLinesOf(Node(), Node());
    return R"(<?xml version="1.0" encoding="UTF-8"?>)" + xmlText(root);
}

}  // namespace tandril::enterprise
