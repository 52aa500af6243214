#pragma once

#include <string>
#include <string_view>

#include "store/order_store.h"

// The options that the page puts into drop-downs of its own.
namespace tandril::forms {

// `<OPTION value=A1>`
std::string optionOpening(std::string_view value);

// An option for each order of the store.
std::string orderOptions(const store::OrderStore& store);

// An option for each activity of the order, which shows both numbers.
std::string activityOptions(const store::OrderStore& store, std::string_view order);

}  // namespace tandril::forms
