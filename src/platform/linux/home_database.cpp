#include "platform/linux/home_database.h"

#include <array>
#include <filesystem>
#include <fstream>

#include "platform/fault.h"
#include "platform/linux/access_connection.h"
#include "platform/odbc/connection.h"

namespace tandril::platform {
namespace {

constexpr std::string_view kDataSources = "SOFTWARE\\ODBC\\odbc.ini\\";

// The drivers are named by their files, which the driver manager looks for in its own folder: they
// need no entry in a configuration file of the machine or the user. A file that is missing is not
// created, and records are read one by one. The time in milliseconds is how long a statement waits
// for a lock.
constexpr std::string_view kSqliteDriver =
    "Driver=libsqlite3odbc.so;NoCreat=1;StepAPI=1;Timeout=10000;Database=";
constexpr std::string_view kAccessDriver = "Driver=libmdbodbc.so;DBQ=";

enum class FileKind { Sqlite, Access, Unknown };

FileKind kindOf(const std::string& path) {
    constexpr std::string_view sqliteStart("SQLite format 3\0", 16);
    constexpr std::size_t accessNameAt = 4;  // behind a number
    std::array<char, 32> start{};
    std::ifstream file(path, std::ios::binary);
    file.read(start.data(), start.size());
    const std::string_view bytes(start.data(), static_cast<std::size_t>(file.gcount()));
    if (bytes.empty() || bytes.starts_with(sqliteStart)) return FileKind::Sqlite;
    if (bytes.size() > accessNameAt) {
        const std::string_view name = bytes.substr(accessNameAt);
        if (name.starts_with("Standard Jet DB") || name.starts_with("Standard ACE DB")) {
            return FileKind::Access;
        }
    }
    return FileKind::Unknown;
}

[[noreturn]] void refuse(const std::string& systemPath, const char* reason) {
    throw Fault("cannot open the database \"" + systemPath + "\": " + reason);
}

}  // namespace

std::unique_ptr<Connection> HomeDatabase::open(std::string_view dsn) {
    const std::string key = std::string(kDataSources) + std::string(dsn);
    const auto connectionString =
        registry_.read(RegistryRoot::LocalMachine, key, "ConnectionString");
    if (connectionString && !connectionString->empty()) {
        return std::make_unique<odbc::OdbcConnection>(*connectionString);
    }
    const auto file = registry_.read(RegistryRoot::LocalMachine, key, "DBQ");
    if (!file) {
        throw Fault("there is no data source \"" + std::string(dsn) + "\"");
    }
    return openFile(*file);
}

std::unique_ptr<Connection> HomeDatabase::openFile(const std::string& systemPath) const {
    if (!files_.fileExists(systemPath)) refuse(systemPath, "there is no such file");
    const std::string path = files_.realPath(systemPath).value_or("");
    // The drivers split their connection strings there and know no quotes.
    if (path.find_first_of(";{}") != std::string::npos) {
        refuse(systemPath, "ODBC drivers take no path with one of the characters ; { }");
    }
    switch (kindOf(path)) {
        case FileKind::Sqlite:
            return std::make_unique<odbc::OdbcConnection>(std::string(kSqliteDriver) + path);
        case FileKind::Access:
            return std::make_unique<AccessConnection>(
                std::make_unique<odbc::OdbcConnection>(std::string(kAccessDriver) + path),
                systemPath);
        case FileKind::Unknown:
            break;
    }
    refuse(systemPath, "it is neither a SQLite nor a Microsoft Access file");
}

}  // namespace tandril::platform
