#pragma once

#include <string>

#include "forms/row.h"

namespace tandril::forms {

// The row of a field in a form that makes a new record. A field that such forms do not show travels
// hidden, with its value.
std::string newRow(const FormField& field);

}  // namespace tandril::forms
