#pragma once

#include "store/order_store.h"

namespace tandril::store {

// Completes every open order that has activities, all of them completed. One that the server sent
// becomes a changed one, since the server must learn of it.
void completeOrders(OrderStore& store);

}  // namespace tandril::store
