#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "store/order_store.h"
#include "store/record_key.h"

namespace tandril::store {

// Sees every order, activity and cost line before it is taken out.
using Witness = std::function<void(const RecordKey& key, xml::Node record)>;

// Shows an order, or an activity, with everything below it to the witness.
void showOrder(const OrderStore& store, std::string_view order, const Witness& witness);
void showActivity(const OrderStore& store, std::string_view order, std::string_view activity,
                  const Witness& witness);

// Takes out an order with its activities and cost lines. What of it there is not is no fault, here
// and below.
void removeOrder(OrderStore& store, std::string_view order);

// What becomes of a group that lost its last activity.
enum class EmptyGroup { Stays, Goes };

// Takes out an activity with its cost lines.
void removeActivity(OrderStore& store, std::string_view order, std::string_view activity,
                    EmptyGroup emptyGroup);

// What the page asks to delete: the keys that are not empty decide between an order, an activity
// and a line; the cost type is the page's word for the line's section. Nothing for a line of an
// unknown cost type, and for no keys at all.
std::optional<RecordKey> addressed(std::string_view order, std::string_view activity,
                                   std::string_view line, std::string_view costType);

// Takes out the record with what is below it. A group that is emptied stays.
void remove(OrderStore& store, const RecordKey& key);

}  // namespace tandril::store
