#pragma once

#include <memory>
#include <string>

#include "platform/database.h"

// Database files through the drivers of unixODBC, which take paths in UTF-8 with slashes.
namespace tandril::platform {

// As openSqliteFile and openAccessFile. Access files can only be read.
std::unique_ptr<Connection> openSqliteThroughUnix(const std::string& path);
std::unique_ptr<Connection> openAccessThroughUnix(const std::string& path,
                                                  const std::string& shown);

}  // namespace tandril::platform
