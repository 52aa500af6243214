#pragma once

#include "store/order_store.h"
#include "store/record_check.h"
#include "store/refusal.h"
#include "xml/node.h"

namespace tandril::store {

// Adds new records with the change state of new ones; groups that are missing are made. `root`
// holds section elements with records (orders) or groups of records. All of them are taken or none:
// the first refusal in document order stands. New orders are checked, the other records are not.
ChangeResult add(OrderStore& store, xml::Node root, RecordCheck& check);

// The hour registration that a document hands in: the root's first child or, where that is the
// section of hour registrations, that one's first child. Null when there is none.
xml::Node givenHourRegistration(xml::Node root);

}  // namespace tandril::store
