#pragma once

#include <functional>
#include <string_view>

#include "store/order_store.h"
#include "store/record_key.h"
#include "store/refusal.h"
#include "xml/node.h"

namespace tandril::store {

// A record that the page hands in, and the keys that it stands under.
struct GivenRecord {
    RecordKey key;
    xml::Node record;
};

// Takes one record into the store. Returns whether it did; if not it sets the refusal.
using TakeRecord = std::function<bool(const GivenRecord& given, ChangeResult& result)>;

// Takes the records of a changed or a new document, in document order: the root's children are
// sections, which hold orders, or groups of records. All of them are taken or none: the first
// refusal stands. `noRecords` is the refusal when a child is no section whose records can be
// changed like this, or when there is no record at all.
ChangeResult takeAll(OrderStore& store, xml::Node root, std::string_view noRecords,
                     const TakeRecord& take);

}  // namespace tandril::store
