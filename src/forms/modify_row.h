#pragma once

#include <string>

#include "forms/row.h"

namespace tandril::forms {

// The row of a field of a record of the store. A field that no form shows travels hidden; one that
// cannot be modified, like every field of a record that is not editable, is shown as text.
std::string modifyRow(const FormField& field, bool isEditable);

}  // namespace tandril::forms
