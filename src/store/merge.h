#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "store/order_store.h"
#include "store/record_check.h"
#include "xml/document.h"

namespace tandril::store {

// What a merge did.
struct MergeResult {
    // An order could not be closed, because it or the server's record lacks the closing fields.
    bool hasFailed = false;
    // Records were added or changed in the section; hour registrations are never merged.
    bool tookOrders = false;
    bool tookActivities = false;
    bool tookMaterial = false;
    bool tookLabour = false;
    bool tookOther = false;

    // The orders that were closed, or whose closing fields changed.
    std::unordered_set<std::string> closedOrders;

    // What the check found in each record that was added and each cost line that was changed, as
    // it stood at that moment, in order.
    std::vector<std::string> findings;

    bool tookAnything() const {
        return tookOrders || tookActivities || tookMaterial || tookLabour || tookOther;
    }
};

// Merges a server's document, whose root is a store's, into the store. The server may close orders
// that are known and overwrite the texts of known cost lines; of everything else that is known it
// changes nothing. New orders come in while they are open, activities and cost lines when their
// order is known. Change states stay as they are. What the check finds keeps no record out.
MergeResult merge(OrderStore& store, const xml::CheckedText& downloaded, RecordCheck& check);

}  // namespace tandril::store
