#pragma once

#include <functional>
#include <string>
#include <vector>

#include "masterdata/tables.h"
#include "platform/database.h"

// Making master-data databases.
namespace tandril::masterdata {

// The columns that a table has at least: company, key and description.
std::vector<std::string> standardColumns(const Table& table);

// Makes the table, all columns text.
void createTable(platform::Connection& database, const Table& table,
                 const std::vector<std::string>& columns);

// Makes the table in `target` with the columns that it has in `source`, and copies its rows; an
// empty text becomes NULL, as Access stores it. `copied` is called after every row. Returns false,
// and makes nothing, when `source` cannot be asked for such a table. Throws Fault when reading or
// writing ends before the last row.
bool copyTable(platform::Connection& source, platform::Connection& target, const Table& table,
               const std::function<void()>& copied);

}  // namespace tandril::masterdata
