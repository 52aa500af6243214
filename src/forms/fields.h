#pragma once

#include <string_view>

// The fields that the forms and the check of records know by name.
namespace tandril::forms::fields {

inline constexpr std::string_view order = "ServiceOrder";
inline constexpr std::string_view activity = "Activity";
inline constexpr std::string_view line = "LineNumber";

inline constexpr std::string_view orderStatus = "OrderStatus";
inline constexpr std::string_view activityStatus = "ActivityStatus";
inline constexpr std::string_view activityDescription = "ActivityDescription";
inline constexpr std::string_view actualWarehouse = "ActualWarehouse";
inline constexpr std::string_view configuration = "Configuration";
inline constexpr std::string_view costComponent = "CostComponent";
inline constexpr std::string_view description = "Description";
inline constexpr std::string_view endDate = "EndDate";
inline constexpr std::string_view executionFinishTime = "ExecutionFinishTime";
inline constexpr std::string_view executionStartTime = "ExecutionStartTime";
inline constexpr std::string_view hourlyLaborType = "HourlyLaborType";
inline constexpr std::string_view interrupted = "Interrupted";
inline constexpr std::string_view interruptionReason = "InterruptionReason";
inline constexpr std::string_view object = "Object";
inline constexpr std::string_view objectNumber = "ObjectNumber";
inline constexpr std::string_view oldObjectNumber = "OldObjectNumber";
inline constexpr std::string_view orderDate = "OrderDate";
inline constexpr std::string_view plannedFinishTime = "PlannedFinishTime";
inline constexpr std::string_view plannedStartTime = "PlannedStartTime";
inline constexpr std::string_view problem = "Problem";
inline constexpr std::string_view problemPriority = "ProblemPriority";
inline constexpr std::string_view referenceA = "ReferenceA";
inline constexpr std::string_view referenceActivity = "ReferenceActivity";
inline constexpr std::string_view salesQuantityUnit = "SalesQuantityUnit";
inline constexpr std::string_view serviceItem = "ServiceItem";
inline constexpr std::string_view solution = "Solution";
inline constexpr std::string_view startDate = "StartDate";
inline constexpr std::string_view task = "Task";
inline constexpr std::string_view unit = "Unit";

// A priority or an object number of this value stands for none.
inline constexpr std::string_view noNumber = "0";

}  // namespace tandril::forms::fields
