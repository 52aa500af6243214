#pragma once

#include <string>
#include <string_view>

#include "forms/kinds.h"
#include "mapper/field_mapper.h"
#include "store/order_store.h"

// The forms that make a record. `number` is the provisional number that the record was given when
// its form was opened; a form that is abandoned leaves a gap.
namespace tandril::forms {

// The form of a record below `parent`, an order and an activity as the page names them; the part of
// the record's own level is passed over. `activityDescription` is shown on a cost line's form.
std::string creationForm(const mapper::FieldMapper& mapper, const FormKind& kind,
                         const RecordKey& parent, std::string_view number,
                         std::string_view activityDescription);

// The description of the activity in the store; "" when it has none.
std::string activityDescription(const store::OrderStore& store, const RecordKey& activity);

// The form of an activity whose order is still to be chosen in `orderRow`.
std::string newActivityForm(const mapper::FieldMapper& mapper, std::string_view number,
                            std::string_view orderRow);
// The row with all orders of the store to choose from.
std::string orderSelectRow(const mapper::FieldMapper& mapper, const store::OrderStore& store);

// The form of a material line whose order and activity are still to be chosen; the page fills the
// drop-downs.
std::string newMaterialForm(const mapper::FieldMapper& mapper, std::string_view number);

// The form of an hour registration, which may hang on no order.
std::string newHourRegistrationForm(const mapper::FieldMapper& mapper, std::string_view number);

}  // namespace tandril::forms
