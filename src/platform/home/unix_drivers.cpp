#include "platform/home/unix_drivers.h"

#include <string_view>

#include "platform/home/access_connection.h"
#include "platform/odbc/connection.h"

namespace tandril::platform {
namespace {

// The drivers are named by their files, which the driver manager looks for in its own folder: they
// need no entry in a configuration file of the machine or the user. A file that is missing is not
// created, and records are read one by one. The time in milliseconds is how long a statement waits
// for a lock. A semicolon ends the path: the driver manager puts no end to a UTF-16 text with
// characters beyond ASCII when it converts it, and what follows would belong to the path.
constexpr std::string_view sqliteDriver =
    "Driver=libsqlite3odbc.so;NoCreat=1;StepAPI=1;Timeout=10000;Database=";
constexpr std::string_view accessDriver = "Driver=libmdbodbc.so;DBQ=";

}  // namespace

std::unique_ptr<Connection> openSqliteThroughUnix(const std::string& path) {
    return std::make_unique<odbc::OdbcConnection>(std::string(sqliteDriver) + path + ";");
}

std::unique_ptr<Connection> openAccessThroughUnix(const std::string& path,
                                                  const std::string& shown) {
    return std::make_unique<AccessConnection>(
        std::make_unique<odbc::OdbcConnection>(std::string(accessDriver) + path + ";"), shown);
}

}  // namespace tandril::platform
