#include "platform/windows/source_database.h"

// The headers of ODBC build on it.
#include <windows.h>

#include <string>

#include "platform/odbc/connection.h"

namespace tandril::platform {

std::unique_ptr<Connection> SourceDatabase::open(std::string_view dsn) {
    return std::make_unique<odbc::OdbcConnection>("DSN=" + std::string(dsn));
}

}  // namespace tandril::platform
