#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/key_index.h"
#include "store/sections.h"
#include "xml/document.h"
#include "xml/node.h"

namespace tandril::store {

// The document of orders, activities, cost lines and hour registrations, found by their keys. Where
// a key occurs twice the first in document order counts. Look-ups go through indexes that are built
// when the first one is made and kept true by the changes that go through this class; nobody else
// changes the document. Returned nodes live as long as the object, or until they are removed.
class OrderStore {
  public:
    // The store that the document is; nothing when its root is not a store's.
    static std::optional<OrderStore> from(std::optional<xml::Document> document);

    const xml::Document& document() const { return document_; }
    // Whether anything was changed since the object was made.
    bool isChanged() const { return isChanged_; }

    // The first element of the section's name, which the lists walk; null when there is none.
    xml::Node section(Section section) const;
    // All orders, or all groups of another section, in document order: what the keys are looked up
    // among.
    std::vector<xml::Node> candidates(Section section) const;

    // Each of these is null when there is no such record.
    xml::Node order(std::string_view order) const;
    xml::Node activityGroup(std::string_view order) const;
    xml::Node activity(std::string_view order, std::string_view activity) const;
    xml::Node costGroup(Section section, std::string_view order, std::string_view activity) const;
    xml::Node line(Section section, std::string_view order, std::string_view activity,
                   std::string_view line) const;
    // The child of a group whose attribute `key` (activityKey or lineKey) has that value.
    xml::Node member(xml::Node group, const char* key, std::string_view value) const;

    // All cost-line groups of an order, or of one of its activities, in document order.
    std::vector<xml::Node> costGroups(Section section, std::string_view order) const;
    std::vector<xml::Node> costGroups(Section section, std::string_view order,
                                      std::string_view activity) const;

    // The text of the first child of the order or the activity; "" when there is none.
    std::string orderStatus(std::string_view order) const;
    std::string activityStatus(std::string_view order, std::string_view activity) const;

    // Appends a deep copy of an order or a group to the section, which is created at the end of the
    // root when it is missing. Returns the copy.
    xml::Node append(Section section, xml::Node element);
    // Appends a new group with these keys; "" leaves the activity out for the activities' section.
    xml::Node appendGroup(Section section, std::string_view order, std::string_view activity);
    // Appends a deep copy of an activity or a cost line to its group. Returns the copy.
    xml::Node appendTo(xml::Node group, xml::Node member);
    // Appends a deep copy of a line to the first element named as the section of hour
    // registrations.
    xml::Node appendHourRegistration(xml::Node line);

    // Takes an order or a group out of the store.
    void remove(Section section, xml::Node element);
    // Takes an activity or a cost line out of its group, which stays.
    void removeMember(xml::Node member);

    // Sets a text or an attribute of an element of the store. Returns whether that changed
    // anything.
    bool setText(xml::Node element, std::string_view value);
    bool setAttribute(xml::Node element, const char* name, std::string_view value);

  private:
    explicit OrderStore(xml::Document document) : document_(std::move(document)) {}

    // One index of each kind for every section; built together in one walk.
    struct SectionIndex {
        std::vector<xml::Node> elements;  // all of the section's name, in document order
        KeyIndex byOrder;                 // orders, and groups by their order
        KeyIndex byActivity;              // cost-line groups by order and activity
    };

    SectionIndex& index(Section section) const;
    void buildIndexes() const;
    static void add(SectionIndex& index, Section section, xml::Node element);
    xml::Node insertionParent(Section section);
    xml::Node createSection(Section section);
    xml::Node manyMembers(xml::Node group, const char* key, std::string_view value) const;

    xml::Document document_;
    bool isChanged_ = false;
    mutable bool isIndexed_ = false;
    mutable std::array<SectionIndex, allSections.size()> indexes_;
    // The members of groups with many of them, by group.
    mutable std::unordered_map<std::size_t, KeyIndex> members_;
};

// The text of the first child: the status of an order or an activity.
std::string statusOf(xml::Node record);
std::string_view stateOf(xml::Node record);

}  // namespace tandril::store
