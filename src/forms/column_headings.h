#pragma once

#include <string_view>

#include "mapper/field_mapper.h"
#include "mapper/list.h"

namespace tandril::forms {

// The header row of the list of hour registrations, whose fields `section` defines. The last cell,
// the date of the registration, is no field's and is not counted.
mapper::ColumnHeader registrationHeadings(const mapper::FieldMapper& mapper,
                                          std::string_view section);

}  // namespace tandril::forms
