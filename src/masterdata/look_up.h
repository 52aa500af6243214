#pragma once

#include <string_view>

#include "platform/database.h"

// Whether the master data knows what a record says. Each throws Fault when the database refuses,
// and when the value cannot stand in a statement.
namespace tandril::masterdata {

// A row of the field's table has the value as its key.
bool hasValue(platform::Connection& connection, std::string_view field, std::string_view value);

// The configuration has an object of that name, which compares exactly.
bool hasObject(platform::Connection& connection, std::string_view configuration,
               std::string_view object);

// The configuration has an object of that number.
bool hasObjectNumber(platform::Connection& connection, std::string_view configuration,
                     std::string_view number);

}  // namespace tandril::masterdata
