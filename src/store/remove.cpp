#include "store/remove.h"

#include <algorithm>
#include <string>

namespace tandril::store {
namespace {

// Hour registrations are deleted among the labour lines: the page shows them there once the server
// has taken them.
constexpr std::string_view hourRegistrationWord = "hra";

std::optional<Section> sectionOfPageWord(std::string_view word) {
    if (word == hourRegistrationWord) {
        return Section::Labour;
    }
    const auto* const found =
        std::find_if(costTypes.begin(), costTypes.end(),
                     [&](const CostType& type) { return type.pageWord == word; });
    return found == costTypes.end() ? std::nullopt : std::optional(found->section);
}

void showMembers(Section section, xml::Node group, const Witness& witness) {
    for (const xml::Node member : xml::elements(group)) {
        witness(OrderStore::keyOf(section, group, member), member);
    }
}

}  // namespace

void showOrder(const OrderStore& store, std::string_view order, const Witness& witness) {
    if (const xml::Node record = store.order(order)) {
        witness({Section::Orders, std::string(order)}, record);
    }
    showMembers(Section::Activities, store.activityGroup(order), witness);
    for (const Section section : costSections) {
        for (const xml::Node group : store.groups(section, order)) {
            showMembers(section, group, witness);
        }
    }
}

void showActivity(const OrderStore& store, std::string_view order, std::string_view activity,
                  const Witness& witness) {
    if (const xml::Node record = store.activity(order, activity)) {
        witness({Section::Activities, std::string(order), std::string(activity)}, record);
    }
    for (const Section section : costSections) {
        for (const xml::Node group : store.groups(section, order, activity)) {
            showMembers(section, group, witness);
        }
    }
}

void removeOrder(OrderStore& store, std::string_view order) {
    if (const xml::Node record = store.order(order)) {
        store.remove(Section::Orders, record);
    }
    if (const xml::Node group = store.activityGroup(order)) {
        store.remove(Section::Activities, group);
    }
    for (const Section section : costSections) {
        for (const xml::Node group : store.groups(section, order)) {
            store.remove(section, group);
        }
    }
}

void removeActivity(OrderStore& store, std::string_view order, std::string_view activity,
                    EmptyGroup emptyGroup) {
    if (const xml::Node record = store.activity(order, activity)) {
        const xml::Node group = record.parent();
        store.removeMember(record);
        if (emptyGroup == EmptyGroup::Goes && !xml::hasElements(group)) {
            store.remove(Section::Activities, group);
        }
    }
    for (const Section section : costSections) {
        for (const xml::Node group : store.groups(section, order, activity)) {
            store.remove(section, group);
        }
    }
}

std::optional<RecordKey> addressed(std::string_view order, std::string_view activity,
                                   std::string_view line, std::string_view costType) {
    RecordKey key{Section::Orders, std::string(order), std::string(activity), std::string(line)};
    if (!line.empty()) {
        const auto section = sectionOfPageWord(costType);
        key.section = section.value_or(Section::Orders);
        return section ? std::optional(key) : std::nullopt;
    }
    if (!activity.empty()) {
        key.section = Section::Activities;
        return key;
    }
    return order.empty() ? std::nullopt : std::optional(key);
}

void remove(OrderStore& store, const RecordKey& key) {
    switch (key.section) {
        case Section::Orders:
            removeOrder(store, key.order);
            break;
        case Section::Activities:
            removeActivity(store, key.order, key.activity, EmptyGroup::Stays);
            break;
        default:
            if (const xml::Node line = store.record(key)) {
                store.removeMember(line);
            }
    }
}

}  // namespace tandril::store
