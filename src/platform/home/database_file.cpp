#include "platform/database_file.h"

#include <array>
#include <fstream>
#include <string_view>

#include "platform/fault.h"
#include "platform/home/file_drivers.h"
#include "platform/utf8_path.h"

namespace tandril::platform {
namespace {

[[noreturn]] void refuse(const std::string& shown, const char* reason) {
    throw Fault("cannot open the database \"" + shown + "\": " + reason);
}

}  // namespace

DatabaseKind databaseKind(const std::string& path) {
    constexpr std::string_view sqliteStart("SQLite format 3\0", 16);
    constexpr std::size_t accessNameAt = 4;  // behind a number
    std::array<char, 32> start{};
    std::ifstream file(pathFromUtf8(path), std::ios::binary);
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
    if (!std::filesystem::is_regular_file(pathFromUtf8(path)))
        refuse(shown, "there is no such file");
    // The drivers split their connection strings there and know no quotes.
    if (path.find_first_of(";{}") != std::string::npos) {
        refuse(shown, "ODBC drivers take no path with one of the characters ; { }");
    }
    switch (databaseKind(path)) {
        case DatabaseKind::Sqlite:
            return openSqliteFile(path);
        case DatabaseKind::Access:
            return openAccessFile(path, shown);
        case DatabaseKind::Unknown:
            break;
    }
    refuse(shown, "it is neither a SQLite nor a Microsoft Access file");
}

}  // namespace tandril::platform
