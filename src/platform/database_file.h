#pragma once

#include <memory>
#include <string>

#include "platform/database.h"

// Database files outside of any data source, by their path on this machine.
namespace tandril::platform {

// What a file holds. A file that is there but empty is an empty SQLite database.
enum class DatabaseKind { Sqlite, Access, Unknown };

DatabaseKind databaseKind(const std::string& path);

// Opens an existing file: SQLite for reading and writing, Access for reading. Throws Fault, in
// which the file is named as `shown`.
std::unique_ptr<Connection> openDatabaseFile(const std::string& path, const std::string& shown);

}  // namespace tandril::platform
