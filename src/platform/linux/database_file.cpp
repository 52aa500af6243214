#include "platform/database_file.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "platform/fault.h"
#include "platform/linux/access_connection.h"
#include "platform/odbc/connection.h"

namespace tandril::platform {
namespace {

// The drivers are named by their files, which the driver manager looks for in its own folder: they
// need no entry in a configuration file of the machine or the user. A file that is missing is not
// created, and records are read one by one. The time in milliseconds is how long a statement waits
// for a lock.
constexpr std::string_view kSqliteDriver =
    "Driver=libsqlite3odbc.so;NoCreat=1;StepAPI=1;Timeout=10000;Database=";
constexpr std::string_view kAccessDriver = "Driver=libmdbodbc.so;DBQ=";

[[noreturn]] void refuse(const std::string& shown, const char* reason) {
    throw Fault("cannot open the database \"" + shown + "\": " + reason);
}

}  // namespace

DatabaseKind databaseKind(const std::string& path) {
    constexpr std::string_view sqliteStart("SQLite format 3\0", 16);
    constexpr std::size_t accessNameAt = 4;  // behind a number
    std::array<char, 32> start{};
    std::ifstream file(path, std::ios::binary);
    file.read(start.data(), start.size());
    const std::string_view bytes(start.data(), static_cast<std::size_t>(file.gcount()));
    if (bytes.empty() || bytes.starts_with(sqliteStart)) return DatabaseKind::Sqlite;
    if (bytes.size() > accessNameAt) {
        const std::string_view name = bytes.substr(accessNameAt);
        if (name.starts_with("Standard Jet DB") || name.starts_with("Standard ACE DB")) {
            return DatabaseKind::Access;
        }
    }
    return DatabaseKind::Unknown;
}

std::unique_ptr<Connection> openDatabaseFile(const std::string& path, const std::string& shown) {
    if (!std::filesystem::is_regular_file(path)) refuse(shown, "there is no such file");
    // The drivers split their connection strings there and know no quotes.
    if (path.find_first_of(";{}") != std::string::npos) {
        refuse(shown, "ODBC drivers take no path with one of the characters ; { }");
    }
    switch (databaseKind(path)) {
        case DatabaseKind::Sqlite:
            return std::make_unique<odbc::OdbcConnection>(std::string(kSqliteDriver) + path);
        case DatabaseKind::Access:
            return std::make_unique<AccessConnection>(
                std::make_unique<odbc::OdbcConnection>(std::string(kAccessDriver) + path), shown);
        case DatabaseKind::Unknown:
            break;
    }
    refuse(shown, "it is neither a SQLite nor a Microsoft Access file");
}

}  // namespace tandril::platform
