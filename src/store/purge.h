#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "store/order_store.h"

namespace tandril::store {

// The numbers of the orders that are finished and may leave the store: those that are not open,
// that have no refused record and are not to be kept, and, unless the server has closed them, whose
// every change was sent.
std::vector<std::string> finishedOrders(const OrderStore& store,
                                        const std::unordered_set<std::string>& withErrors,
                                        const std::unordered_set<std::string>& toKeep);

}  // namespace tandril::store
