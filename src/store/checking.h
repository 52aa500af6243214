#pragma once

#include "store/order_store.h"
#include "store/record_check.h"
#include "store/refusal.h"
#include "xml/node.h"

namespace tandril::store {

// Has a record that the page hands in checked, under the key that it stands under; see
// CheckedRecord for `record` and `edit`. Returns whether it passes. If not the refusal is all its
// failures; what could not be looked up is noted in any case.
bool passes(const OrderStore& store, RecordCheck& check, const RecordKey& key, xml::Node record,
            xml::Node edit, ChangeResult& result);

// The findings of the check of a record of the store. The activity of a cost line is looked up.
std::vector<CheckFinding> findings(const OrderStore& store, RecordCheck& check,
                                   const RecordKey& key, xml::Node record, xml::Node edit = {});

}  // namespace tandril::store
