#pragma once

#include "store/order_store.h"
#include "store/remove.h"
#include "store/upload_report.h"

namespace tandril::store {

// Applies every confirmation of the report to the store and takes it out of the report, and then
// every upload without entries. A confirmed record leaves the store, with its order or activity and
// all below it, once the server needs that no more and has refused nothing of it; otherwise its
// change state falls back. `leaving` sees what is taken out.
void applyConfirmations(OrderStore& store, UploadReport& report, const Witness& leaving);

}  // namespace tandril::store
