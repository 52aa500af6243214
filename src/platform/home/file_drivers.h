#pragma once

#include <memory>
#include <string>

#include "platform/database.h"

// What opens database files on this platform.
namespace tandril::platform {

// An existing SQLite file, for reading and writing. Throws Fault.
std::unique_ptr<Connection> openSqliteFile(const std::string& path);

// A Microsoft Access file. Throws Fault, in which the file is named as `shown`.
std::unique_ptr<Connection> openAccessFile(const std::string& path, const std::string& shown);

}  // namespace tandril::platform
