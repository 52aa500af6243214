#pragma once

#include <string>
#include <string_view>

#include "masterdata/source.h"

namespace tandril::masterdata {

// The panel with all records of the table of that code, or a message in its place: there is no
// database, or no such table. Throws Fault when the database cannot be asked.
std::string listing(const Source& source, std::string_view code);

}  // namespace tandril::masterdata
