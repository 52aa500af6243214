#include "platform/home/home_database.h"

#include "platform/database_file.h"
#include "platform/fault.h"
#include "platform/odbc/connection.h"

namespace tandril::platform {
namespace {

constexpr std::string_view dataSources = "SOFTWARE\\ODBC\\odbc.ini\\";

}  // namespace

std::unique_ptr<Connection> HomeDatabase::open(std::string_view dsn) {
    const std::string key = std::string(dataSources) + std::string(dsn);
    const auto connectionString =
        registry_.read(RegistryRoot::LocalMachine, key, "ConnectionString");
    if (connectionString && !connectionString->empty()) {
        return std::make_unique<odbc::OdbcConnection>(*connectionString);
    }
    const auto file = registry_.read(RegistryRoot::LocalMachine, key, "DBQ");
    if (!file) {
        throw Fault("there is no data source \"" + std::string(dsn) + "\"");
    }
    return openDatabaseFile(realPath_(*file).value_or(""), *file);
}

}  // namespace tandril::platform
