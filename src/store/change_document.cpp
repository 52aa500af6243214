#include "store/change_document.h"

#include "store/order_store.h"

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

}  // namespace

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

}  // namespace tandril::store
