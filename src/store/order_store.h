#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/candidates.h"
#include "store/key_index.h"
#include "store/record_key.h"
#include "store/sections.h"
#include "store/state.h"
#include "store/undo_log.h"
#include "xml/document.h"
#include "xml/node.h"

namespace tandril::store {

// The document of orders, activities, cost lines and hour registrations, found by their keys. Where
// a key occurs twice the first in document order counts. Look-ups go through indexes that are built
// when the first one is made and kept true by the changes that go through this class; nobody else
// changes the document. Sections inside of records are not looked for. Returned nodes live as long
// as the object, or until they are removed.
class OrderStore {
  public:
    // The store that the document is; nothing when its root is not a store's.
    static std::optional<OrderStore> from(std::optional<xml::Document> document);
    // The same of a document that may be divided by the names of the sections: those that nobody
    // looks at are not parsed. It is for reading.
    static std::unique_ptr<const OrderStore> toRead(std::optional<xml::Document> document);

    const xml::Document& document() const { return document_; }
    // Whether anything was changed since the object was made.
    bool isChanged() const { return isChanged_; }

    // The first element of the section's name, which the lists walk; null when there is none.
    xml::Node section(Section section) const;
    // All orders, or all groups of another section, in document order: what the keys are looked up
    // among.
    std::vector<xml::Node> candidates(Section section) const;
    // The key parts of an order or a group among the candidates, and of a member of a group.
    static RecordKey keyOf(Section section, xml::Node candidate);
    static RecordKey keyOf(Section section, xml::Node group, xml::Node member);

    // Each of these is null when there is no such record.
    xml::Node order(std::string_view order) const;
    xml::Node activityGroup(std::string_view order) const;
    xml::Node activity(std::string_view order, std::string_view activity) const;
    xml::Node costGroup(Section section, std::string_view order, std::string_view activity) const;
    xml::Node line(Section section, std::string_view order, std::string_view activity,
                   std::string_view line) const;
    // The order, activity or cost line with that key.
    xml::Node record(const RecordKey& key) const;
    // The group of activities or cost lines that the key's record belongs to.
    xml::Node group(const RecordKey& key) const;
    // The child of a group whose attribute `key` (activityKey or lineKey) has that value.
    xml::Node member(xml::Node group, const char* key, std::string_view value) const;

    // All groups of an order in a section of activities or cost lines, or the cost-line groups of
    // one of its activities, in document order.
    std::vector<xml::Node> groups(Section section, std::string_view order) const;
    std::vector<xml::Node> groups(Section section, std::string_view order,
                                  std::string_view activity) const;

    // The text of the first child of the order or the activity; "" when there is none.
    std::string orderStatus(std::string_view order) const;
    std::string activityStatus(std::string_view order, std::string_view activity) const;

    // Makes the tree of a text whose orders, groups and members can be taken over. Returns its
    // document element.
    xml::Node parseBeside(const xml::CheckedText& text) { return document_.parseBeside(text); }
    // Ends the use of what is left of that tree.
    void dropBeside(xml::Node root) { document_.dropBeside(root); }

    // Appends a deep copy of an order or a group to the section, which is created at the end of the
    // root when it is missing. Returns the copy.
    xml::Node append(Section section, xml::Node element);
    // The same with an element that was parsed beside the document, which is moved.
    xml::Node take(Section section, xml::Node element);
    // Appends a new group with these keys; "" leaves the activity out for the activities' section.
    xml::Node appendGroup(Section section, std::string_view order, std::string_view activity);
    // Appends a deep copy of an activity or a cost line to its group. Returns the copy.
    xml::Node appendTo(xml::Node group, xml::Node member);
    // The same with a member that was parsed beside the document, which is moved.
    xml::Node takeInto(xml::Node group, xml::Node member);
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
    // Moves the element's change state on. Returns whether that changed anything.
    bool apply(Event event, xml::Node record);
    bool apply(GroupEvent event, xml::Node group);

    // Changes behind begin() are taken back by takeBack(), unless keep() came first. Nothing may be
    // removed in between.
    void begin();
    void keep();
    void takeBack();

  private:
    explicit OrderStore(xml::Document document) : document_(std::move(document)) {}

    // One walk finds what belongs to each section; an index of its keys is built when the first key
    // is looked up in it.
    struct SectionIndex {
        bool isFilled = false;
        std::vector<xml::Node> elements;     // all of the section's name, in document order
        std::vector<xml::Node> candidates;   // its orders or groups, while an index may be built
        std::optional<KeyIndex> byOrder;     // orders, and groups by their order
        std::optional<KeyIndex> byActivity;  // cost-line groups by order and activity
    };

    SectionIndex& index(Section section) const;
    void fill(Section section) const;
    KeyIndex& byOrder(Section section) const;
    KeyIndex& byActivity(Section section) const;
    template <class KeyOf>
    static KeyIndex& built(std::optional<KeyIndex>& keys, const std::vector<xml::Node>& candidates,
                           const KeyOf& keyOf);
    void addToIndex(Section section, xml::Node candidate);
    xml::Node added(Section section, xml::Node candidate);
    xml::Node addedTo(xml::Node group, xml::Node member);
    void noteAddition(xml::Node added);
    xml::Node insertionParent(Section section);
    xml::Node createSection(Section section);
    xml::Node manyMembers(xml::Node group, const char* key, std::string_view value) const;

    xml::Document document_;
    bool isChanged_ = false;
    mutable std::array<SectionIndex, allSections.size()> indexes_;
    // The members of groups with many of them, by group.
    mutable std::unordered_map<std::size_t, KeyIndex> members_;

    std::unique_ptr<UndoLog> undo_;  // while changes can be taken back
    bool wasChanged_ = false;        // before they began
};

// The text of the first child: the status of an order or an activity.
std::string statusOf(xml::Node record);
std::string_view stateOf(xml::Node record);
bool isCostSection(Section section);

// Changes of a store that are taken back at the end of the scope unless they were kept.
class Transaction {
  public:
    explicit Transaction(OrderStore& store) : store_(store) { store_.begin(); }
    ~Transaction() { store_.takeBack(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void keep() { store_.keep(); }

  private:
    OrderStore& store_;
};

}  // namespace tandril::store
