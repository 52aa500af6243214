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
    // To be marked as sent: of several records with the same key the first, even if it is not the
    // one in the text.
    std::vector<xml::Node> records;
};

Upload makeUpload(const OrderStore& store);

// Marks the records of the upload as sent. The store must not have changed since it was made.
void markSent(OrderStore& store, const Upload& upload);

}  // namespace tandril::store
