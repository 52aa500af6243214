#pragma once

#include <string>

#include "component/call.h"

// The methods around the server's upload report.
namespace tandril::report_calls {

// Takes a report and applies it. "" or the error text.
std::string take(Call& call, const std::string& xml);

std::string errorPool(Call& call);
std::string errorList(Call& call);

// Collects the orders with refused records into the module's list. Returns false, with an empty
// list, when the report cannot be loaded; a missing one refuses nothing.
bool collectErrorOrders(Call& call);

}  // namespace tandril::report_calls
