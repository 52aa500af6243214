#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"

namespace tandril::masterdata {

// Opens a connection to the current database; gives none while its file is missing, and throws
// Fault when it does not open.
using OpenConnection = std::function<std::unique_ptr<platform::Connection>()>;

// Applies an extract, unit by unit and table by table. A table whose row fails keeps what its rows
// before did, and the other tables go on; neither that nor a database that is missing or does not
// open changes the result. Returns "SUCCESSFUL", "INVALID XML String!!" for what is no XML, or
// "FAILED" when something else went wrong.
std::string synchronise(std::string_view extract, const OpenConnection& open);

}  // namespace tandril::masterdata
