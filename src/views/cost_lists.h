#pragma once

#include <string>
#include <string_view>

#include "mapper/field_mapper.h"
#include "mapper/labels.h"
#include "store/order_store.h"

// The lists of cost lines and of hour registrations.
namespace tandril::views {

// Which lines a list shows: those of one activity, or by change states.
enum class Lines { OfActivity, Working, Sent };

// The lines of a cost type ("Material", "Labor", "Other") as a panel; "" when there is none. Order
// and activity count for Lines::OfActivity only.
std::string costLineList(Lines lines, std::string_view costType, std::string_view order,
                         std::string_view activity, const store::OrderStore& store,
                         const mapper::FieldMapper& mapper);

// The hour registrations as a panel, all of them for Lines::OfActivity; "" when there is none.
std::string hourRegistrationList(Lines lines, const store::OrderStore& store,
                                 const mapper::FieldMapper& mapper);

// The panel with order, activity and the drop-down of cost types.
std::string costLinesHeader(std::string_view order, std::string_view activity,
                            const mapper::Labels& labels);

// The lines of an activity for the drop-down's digit ("1" material, "2" labour, "3" other), or a
// small table that says that there are none; offline, that table offers to create one. `store` is
// null when there is no store in memory.
std::string activityCostLines(std::string_view digit, std::string_view order,
                              std::string_view activity, bool isOffline,
                              const store::OrderStore* store, const mapper::FieldMapper& mapper);

}  // namespace tandril::views
