#pragma once

#include "store/order_store.h"
#include "store/record_check.h"
#include "store/refusal.h"
#include "xml/node.h"

namespace tandril::store {

// Lays edited records over those of the store: every text of an edited record replaces the text of
// the stored field of that name; fields that the stored record lacks are ignored. `root` holds
// section elements with records (orders) or groups of records. All of them are taken or none: the
// first refusal in document order stands. A record that was sent already, and what was sent below
// a provisional one, will be sent again.
ChangeResult edit(OrderStore& store, xml::Node root, RecordCheck& check);

}  // namespace tandril::store
