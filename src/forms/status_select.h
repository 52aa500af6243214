#pragma once

#include <string>

#include "forms/row.h"

namespace tandril::forms {

// The cell with the drop-down of a coded field. An order's status shows but cannot be changed; an
// activity's offers only the statuses that may follow the current one; any other field offers its
// whole value list. An entry that the list lacks is left out.
std::string statusSelect(const FormField& field, FormMode mode);

}  // namespace tandril::forms
