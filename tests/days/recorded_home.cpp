#include "days/recorded_home.h"

#include <algorithm>
#include <filesystem>

#include "days/comparison.h"
#include "platform/home/file_drivers.h"
#include "platform/utf8_path.h"
#include "surface/json_call.h"

namespace tandril::test {
namespace {

using nlohmann::json;

constexpr const char* installFolder = "Vorn Tandril/";

int base64Digit(char c) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t found = digits.find(c);
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

std::string fromBase64(std::string_view text) {
    std::string bytes;
    unsigned held = 0;
    int bits = 0;
    for (const char c : text) {
        const int digit = base64Digit(c);
        if (digit < 0) {
            break;
        }
        held = (held << 6U) | static_cast<unsigned>(digit);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes += static_cast<char>((held >> static_cast<unsigned>(bits)) & 0xFFU);
        }
    }
    return bytes;
}

// A recorded file is a text, or bytes that are none.
std::string bytesOf(const json& file) {
    return file.is_object() ? fromBase64(file["base64"].get<std::string>())
                            : file.get<std::string>();
}

// An empty file is an empty database.
std::unique_ptr<platform::Connection> createDatabaseFile(const TemporaryHome& home,
                                                         const std::string& file) {
    home.write(file, "");
    return platform::openSqliteFile(home.pathOf(file));
}

std::string literal(const json& value) {
    if (value.is_null()) {
        return "NULL";
    }
    std::string text = "'";
    for (const char c : value.get<std::string>()) {
        text += c;
        if (c == '\'') {
            text += c;
        }
    }
    return text + "'";
}

std::string databaseFile(const json& masterData) {
    return std::string(installFolder) + "MasterData/" + masterData["name"].get<std::string>() +
           ".mdb";
}

void createTable(platform::Connection& connection, const std::string& name, const json& table) {
    std::string columns;
    for (const std::string column : table["columns"]) {
        columns += (columns.empty() ? "" : ", ") + column;
        columns += column.find(' ') == std::string::npos ? " TEXT" : "";
    }
    connection.execute("CREATE TABLE " + name + " (" + columns + ")");
    for (const json& row : table["rows"]) {
        std::string values;
        for (const json& value : row) {
            values += (values.empty() ? "" : ", ") + literal(value);
        }
        connection.execute("INSERT INTO " + name + " VALUES (" + values + ")");
    }
}

void fillDatabase(platform::Connection& connection, const json& tables) {
    connection.begin();
    for (const auto& [name, table] : tables.items()) {
        createTable(connection, name, table);
    }
    connection.commit();
}

Tables sorted(Tables tables) {
    for (auto& [name, rows] : tables) {
        std::sort(rows.begin(), rows.end());
    }
    return tables;
}

Tables expectedTables(const json& tables) {
    Tables expected;
    for (const auto& [name, rows] : tables.items()) {
        auto& list = expected[name];
        for (const json& row : rows) {
            std::vector<std::string> values;
            for (const json& value : row) {
                values.push_back(value.is_null() ? "NULL" : literal(value));
            }
            list.push_back(std::move(values));
        }
    }
    return sorted(std::move(expected));
}

std::vector<std::vector<std::string>> readTable(platform::Connection& connection,
                                                const std::string& name) {
    std::string columns;
    connection.query(
        "SELECT name FROM pragma_table_info('" + name + "')", [](const auto&) {},
        [&](const std::vector<std::string>& row) {
            columns += (columns.empty() ? "quote(\"" : ", quote(\"") + row[0] + "\")";
            return true;
        });
    std::vector<std::vector<std::string>> rows;
    connection.query(
        "SELECT " + columns + " FROM \"" + name + "\"", [](const auto&) {},
        [&](const std::vector<std::string>& row) {
            rows.push_back(row);
            return true;
        });
    return rows;
}

Tables actualTables(const std::string& path) {
    const auto connection = platform::openSqliteFile(path);
    std::vector<std::string> names;
    connection->query(
        "SELECT name FROM sqlite_master WHERE type='table'", [](const auto&) {},
        [&](const std::vector<std::string>& row) {
            names.push_back(row[0]);
            return true;
        });
    Tables tables;
    for (const std::string& name : names) {
        tables[name] = readTable(*connection, name);
    }
    return sorted(std::move(tables));
}

}  // namespace

RecordedHome::RecordedHome(const json& day) {
    for (const auto& [name, file] : day["files"].items()) {
        home_.write(name, bytesOf(file));
    }
    if (!day["masterdata"].is_null()) {
        fillDatabase(*createDatabaseFile(home_, databaseFile(day["masterdata"])),
                     day["masterdata"]["tables"]);
    }
    restart();
}

void RecordedHome::restart() {
    client_.reset();
    module_.reset();
    machine_ = platform::openMachine(home_.path());
    module_ = std::make_unique<Module>(machine_->machine());
    client_ = std::make_unique<Client20>(*module_);
}

std::optional<json> RecordedHome::run(const json& step) {
    const std::string method = step["method"];
    const json& arguments = step["args"];
    if (method == "$restart") {
        restart();
    } else if (method == "$delete") {
        std::filesystem::remove_all(
            platform::pathFromUtf8(home_.pathOf(arguments[0].get<std::string>())));
    } else if (method == "$write") {
        home_.write(arguments[0].get<std::string>(), bytesOf(arguments[1]));
    } else if (method == "$mkdir") {
        home_.makeFolder(arguments[0].get<std::string>());
    } else {
        return surface::call(*client_, method, arguments).body;
    }
    return std::nullopt;
}

std::string RecordedHome::compareWithEnd(const json& day) const {
    for (const auto& [name, file] : day["final"].items()) {
        const std::string difference = compareFile(name, bytesOf(file));
        if (!difference.empty()) {
            return name + " " + difference;
        }
    }
    return day["masterdata"].is_null() ? "" : compareTables(day);
}

std::string RecordedHome::compareFile(const std::string& name, std::string_view expected) const {
    if (!home_.exists(installFolder + name)) {
        return "is missing";
    }
    const std::string actual = home_.read(installFolder + name);
    if (name.ends_with(".xml")) {
        return compareXml(expected, actual);
    }
    return name == "log.txt" ? compareLog(expected, actual) : compareText(expected, actual);
}

std::string RecordedHome::compareTables(const json& day) const {
    const Tables expected = expectedTables(day["tables"]);
    const Tables actual = actualTables(home_.pathOf(databaseFile(day["masterdata"])));
    for (const auto& [name, rows] : expected) {
        const auto found = actual.find(name);
        if (found == actual.end()) {
            return "the table " + name + " is missing";
        }
        if (found->second != rows) {
            return "the table " + name + " holds other rows";
        }
    }
    return actual.size() == expected.size() ? "" : "there are more tables than expected";
}

}  // namespace tandril::test
