#pragma once

#include <string>
#include <vector>

#include "store/order_store.h"

namespace tandril::store {

// The text of what changed since it was last sent, and the records in it.
struct Upload {
    // The store's document element without the orders, activities and cost lines that are not to be
    // sent. Orders without activities stay out; all hour registrations are in. "" when that leaves
    // nothing but hour registrations and empty groups.
    std::string text;
    std::vector<RecordKey> records;
};

Upload makeUpload(const OrderStore& store);

// Marks the records of the upload as sent; each by its key, so that of several with the same key
// the first is marked.
void markSent(OrderStore& store, const Upload& upload);

}  // namespace tandril::store
