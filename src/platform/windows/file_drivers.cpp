#include "platform/home/file_drivers.h"

#include <string_view>

#include "platform/home/unix_drivers.h"
#include "platform/odbc/connection.h"
#include "platform/windows/unix_path.h"

namespace tandril::platform {
namespace {

// By the names under which their makers register them.
constexpr std::string_view windowsSqlite =
    "Driver={SQLite3 ODBC Driver};NoCreat=1;StepAPI=1;Timeout=10000;Database=";
constexpr std::string_view windowsAccess = "Driver={Microsoft Access Driver (*.mdb, *.accdb)};DBQ=";

}  // namespace

// Wine hands ODBC over to the driver manager of the system below.
std::unique_ptr<Connection> openSqliteFile(const std::string& path) {
    if (const auto unixName = unixPath(path)) return openSqliteThroughUnix(*unixName);
    return std::make_unique<odbc::OdbcConnection>(std::string(windowsSqlite) + path);
}

std::unique_ptr<Connection> openAccessFile(const std::string& path, const std::string& shown) {
    if (const auto unixName = unixPath(path)) return openAccessThroughUnix(*unixName, shown);
    return std::make_unique<odbc::OdbcConnection>(std::string(windowsAccess) + path);
}

}  // namespace tandril::platform
