#include "store/merge.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "store/checking.h"

namespace tandril::store {
namespace {

// Where an order record holds what the server says when it closes it.
constexpr std::array<std::size_t, 2> closingFields{21, 22};

// A list, since the members that are taken over leave their group during the walk.
std::vector<xml::Node> membersOf(xml::Node group) {
    const xml::Elements members(group);
    return {members.begin(), members.end()};
}

class Merge {
  public:
    // What is new moves over from a tree beside the store's.
    Merge(OrderStore& store, xml::Node downloaded, RecordCheck& check)
        : store_(store), check_(check) {
        for (const Candidate& candidate : candidatesBelow(downloaded)) {
            downloaded_[static_cast<std::size_t>(candidate.section)].push_back(candidate.element);
        }
    }

    MergeResult run() {
        mergeOrders();
        mergeActivities();
        result_.tookMaterial = mergeCostLines(Section::Material);
        result_.tookLabour = mergeCostLines(Section::Labour);
        result_.tookOther = mergeCostLines(Section::Other);
        return std::move(result_);
    }

  private:
    const std::vector<xml::Node>& downloaded(Section section) const {
        return downloaded_[static_cast<std::size_t>(section)];
    }
    void mergeOrders();
    void closeOrder(xml::Node known, xml::Node downloaded);
    void mergeActivities();
    bool mergeActivityGroup(xml::Node downloaded);
    void reopenOrder(std::string_view order);
    bool mergeCostLines(Section section);
    bool mergeCostGroup(Section section, xml::Node downloaded);
    bool mergeLine(Section section, xml::Node group, xml::Node downloaded);
    bool overwriteTexts(xml::Node known, xml::Node downloaded);
    void check(const RecordKey& key, xml::Node record);
    void checkMembers(Section section, xml::Node group);

    OrderStore& store_;
    std::array<std::vector<xml::Node>, allSections.size()> downloaded_;  // what comes, by section
    RecordCheck& check_;
    MergeResult result_;
};

void Merge::mergeOrders() {
    for (const xml::Node order : downloaded(Section::Orders)) {
        const std::string status = statusOf(order);
        const xml::Node known = store_.order(xml::attribute(order, orderKey));
        if (known && status == status::closed) {
            closeOrder(known, order);
        } else if (!known && status == status::open) {
            check(OrderStore::keyOf(Section::Orders, order), store_.take(Section::Orders, order));
            result_.tookOrders = true;
        }
    }
}

void Merge::closeOrder(xml::Node known, xml::Node downloaded) {
    if (!xml::elementAt(known, closingFields.back()) ||
        !xml::elementAt(downloaded, closingFields.back())) {
        result_.hasFailed = result_.hasFailed || statusOf(known) != status::closed;
        return;
    }
    bool changed = store_.setText(xml::elementAt(known, 0), status::closed);
    for (const std::size_t field : closingFields) {
        const std::string text = xml::text(xml::elementAt(downloaded, field));
        changed = store_.setText(xml::elementAt(known, field), text) || changed;
    }
    if (changed) {
        result_.tookOrders = true;
        result_.closedOrders.emplace(xml::attribute(known, orderKey));
    }
}

void Merge::mergeActivities() {
    for (const xml::Node group : downloaded(Section::Activities)) {
        const std::string_view order = xml::attribute(group, groupOrderKey);
        if (store_.order(order) && mergeActivityGroup(group)) {
            reopenOrder(order);
        }
    }
}

// Returns whether the order has an activity more than before.
bool Merge::mergeActivityGroup(xml::Node downloaded) {
    const xml::Node group = store_.activityGroup(xml::attribute(downloaded, groupOrderKey));
    if (!group) {
        const xml::Node added = store_.take(Section::Activities, downloaded);
        checkMembers(Section::Activities, added);
        result_.tookActivities = true;
        return xml::hasElements(added);
    }
    bool hasNew = false;
    for (const xml::Node activity : membersOf(downloaded)) {
        if (!store_.member(group, activityKey, xml::attribute(activity, activityKey))) {
            const xml::Node added = store_.takeInto(group, activity);
            check(OrderStore::keyOf(Section::Activities, group, added), added);
            hasNew = true;
        }
    }
    result_.tookActivities = result_.tookActivities || hasNew;
    return hasNew;
}

void Merge::reopenOrder(std::string_view order) {
    const xml::Node known = store_.order(order);
    if (statusOf(known) == status::completed) {
        store_.setText(xml::elementAt(known, 0), status::open);
    }
}

bool Merge::mergeCostLines(Section section) {
    bool took = false;
    for (const xml::Node group : downloaded(section)) {
        if (store_.order(xml::attribute(group, groupOrderKey))) {
            took = mergeCostGroup(section, group) || took;
        }
    }
    return took;
}

bool Merge::mergeCostGroup(Section section, xml::Node downloaded) {
    const xml::Node group = store_.costGroup(section, xml::attribute(downloaded, groupOrderKey),
                                             xml::attribute(downloaded, activityKey));
    if (!group) {
        checkMembers(section, store_.take(section, downloaded));
        return true;
    }
    bool took = false;
    for (const xml::Node line : membersOf(downloaded)) {
        took = mergeLine(section, group, line) || took;
    }
    return took;
}

bool Merge::mergeLine(Section section, xml::Node group, xml::Node downloaded) {
    xml::Node line = store_.member(group, lineKey, xml::attribute(downloaded, lineKey));
    if (!line) {
        line = store_.takeInto(group, downloaded);
    } else if (!overwriteTexts(line, downloaded)) {
        return false;
    }
    check(OrderStore::keyOf(section, group, line), line);
    return true;
}

bool Merge::overwriteTexts(xml::Node known, xml::Node downloaded) {
    bool changed = false;
    for (const xml::Node field : xml::elements(downloaded)) {
        if (const xml::Node own = xml::child(known, field.name())) {
            changed = store_.setText(own, xml::text(field)) || changed;
        }
    }
    return changed;
}

// What could not be looked up is told before what is wrong with the record.
void Merge::check(const RecordKey& key, xml::Node record) {
    std::vector<CheckFinding> found = findings(store_, check_, key, record);
    std::stable_partition(found.begin(), found.end(), [](const CheckFinding& finding) {
        return finding.kind == CheckFinding::Kind::LookUpFault;
    });
    for (CheckFinding& finding : found) {
        result_.findings.push_back(std::move(finding.text));
    }
}

void Merge::checkMembers(Section section, xml::Node group) {
    for (const xml::Node member : xml::elements(group)) {
        check(OrderStore::keyOf(section, group, member), member);
    }
}

}  // namespace

MergeResult merge(OrderStore& store, const xml::CheckedText& downloaded, RecordCheck& check) {
    const xml::Node root = store.parseBeside(downloaded);
    MergeResult result = Merge(store, root, check).run();
    store.dropBeside(root);
    return result;
}

}  // namespace tandril::store
