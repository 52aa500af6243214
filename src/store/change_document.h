#pragma once

#include <optional>
#include <vector>

#include "store/record_key.h"
#include "xml/node.h"

namespace tandril::store {

// A record that the page hands in, and the keys that it stands under.
struct GivenRecord {
    RecordKey key;
    xml::Node record;
};

// The records of a changed or a new document, in document order: the root's children are sections,
// which hold orders, or groups of records. Nothing when a child is no section whose records can be
// changed like this, or when there is no record at all.
std::optional<std::vector<GivenRecord>> givenRecords(xml::Node root);

}  // namespace tandril::store
