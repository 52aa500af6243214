#include "store/change_document.h"

#include <optional>
#include <vector>

namespace tandril::store {
namespace {

void addOrders(xml::Node section, std::vector<GivenRecord>& records) {
    for (const xml::Node order : xml::elements(section)) {
        if (xml::isNamed(order, orderElement)) {
            records.push_back({OrderStore::keyOf(Section::Orders, order), order});
        }
    }
}

void addMembers(Section kind, xml::Node section, std::vector<GivenRecord>& records) {
    for (const xml::Node group : xml::elements(section)) {
        if (!xml::isNamed(group, groupElement)) {
            continue;
        }
        for (const xml::Node member : xml::elements(group)) {
            records.push_back({OrderStore::keyOf(kind, group, member), member});
        }
    }
}

// Nothing when there is nothing that can be taken.
std::optional<std::vector<GivenRecord>> givenRecords(xml::Node root) {
    std::vector<GivenRecord> records;
    for (const xml::Node section : xml::elements(root)) {
        const auto kind = sectionNamed(section.name());
        if (!kind || *kind == Section::HourRegistrations) {
            return std::nullopt;
        }
        if (*kind == Section::Orders) {
            addOrders(section, records);
        } else {
            addMembers(*kind, section, records);
        }
    }
    if (records.empty()) {
        return std::nullopt;
    }
    return records;
}

}  // namespace

ChangeResult takeAll(OrderStore& store, xml::Node root, std::string_view noRecords,
                     const TakeRecord& take) {
    ChangeResult result;
    const auto records = givenRecords(root);
    if (!records) {
        result.refusal = Refusal{noRecords};
        return result;
    }
    Transaction transaction(store);
    for (const GivenRecord& given : *records) {
        if (!take(given, result)) {
            result.resent.clear();
            return result;
        }
    }
    transaction.keep();
    return result;
}

}  // namespace tandril::store
