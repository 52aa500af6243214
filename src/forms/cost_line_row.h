#pragma once

#include <string>

#include "forms/row.h"

namespace tandril::forms {

// Whether the field of a cost line or an hour registration has a row of its own kind, at the end of
// the form.
bool isCostLineField(std::string_view name);

// The row of such a field, which is shown whatever the field mapper says of its visibility; "" for
// any other.
std::string costLineRow(const FormField& field, bool isEditable);

}  // namespace tandril::forms
