#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "enterprise/records.h"

namespace tandril::enterprise {

// The orders as the office knows them: a document of the store's shape. A record that came under a
// provisional number and has a real one since keeps the former in the attribute From for as long as
// its sender may still use it; look-ups take either. A light handle on a node of the office's
// memory.
class OrderBook {
  public:
    using Node = pugi::xml_node;

    explicit OrderBook(Node harbrook) : root_(harbrook) {}

    // Null when there is no such record.
    Node order(const std::string& number) const;
    Node activity(Node order, const std::string& number) const;

    // The groups of an order's lines. The order is null for hour registrations.
    Node lineGroup(Kind kind, Node order, Node activity) const;
    Node line(Node group, const std::string& number) const;

    // New records, without fields; groups are created on the way.
    Node addOrder(const std::string& number) const;
    Node addActivity(Node order, const std::string& number) const;
    Node addLine(Kind kind, Node order, Node activity, const std::string& number) const;

    std::vector<Node> orders() const;
    std::vector<Node> activities(Node order) const;
    // The groups of lines of the order, or of one activity of it, of all three kinds.
    std::vector<Node> lineGroups(Node order) const;
    std::vector<Node> lineGroups(Node order, Node activity) const;

    // The sum of the hours of a person's labour lines and registrations that begin on the day
    // ("yyyymmdd"), without the line `except`.
    double hoursOnDay(const std::string& employee, std::string_view day, Node except) const;

    // Gives the order, its activities and their lines real numbers; From keeps the old ones.
    void giveNumbers(Node order) const;
    // Gives an activity of a numbered order a real number and, when it came under a provisional
    // one, its lines too.
    void giveNumbers(Node order, Node activity) const;
    // Forgets the provisional numbers of the order, or of one activity of it.
    void forgetProvisionalNumbers(Node order) const;
    void forgetProvisionalNumbers(Node order, Node activity) const;

    // Makes the fields of `source` those of `target`.
    static void replaceFields(Node target, Node source);

  private:
    Node root_;

    Node section(Kind kind) const { return root_.child(sectionOf(kind)); }
    Node activityGroup(Node order) const;
};

}  // namespace tandril::enterprise
