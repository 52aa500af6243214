#pragma once

#include <string>
#include <string_view>

#include "mapper/field_mapper.h"
#include "store/order_store.h"

// The eight lists of orders and activities.
namespace tandril::views {

enum class RecordList {
    MyActivities,
    CompletedAgenda,
    CanceledAgenda,
    Orders,
    WorkingOrders,
    SentOrders,
    WorkingActivities,
    SentActivities,
};

// The list as a panel for the container "divList"; "" when no record is to be shown.
std::string recordList(RecordList list, const store::OrderStore& store,
                       const mapper::FieldMapper& mapper);

// The message code that says that the list is empty.
std::string_view emptyMessage(RecordList list);

}  // namespace tandril::views
