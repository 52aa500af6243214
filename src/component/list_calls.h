#pragma once

#include <string>
#include <string_view>

#include "component/call.h"
#include "views/cost_lists.h"
#include "views/record_lists.h"

// The methods that show lists.
namespace tandril::lists {

std::string records(Call& call, views::RecordList list);
std::string costLines(Call& call, views::Lines lines, std::string_view costType,
                      std::string_view order, std::string_view activity);
std::string hourRegistrations(Call& call, views::Lines lines);
std::string activityCostLines(Call& call, std::string_view digit, std::string_view order,
                              std::string_view activity);
std::string costLinesHeader(Call& call, std::string_view order, std::string_view activity);

}  // namespace tandril::lists
