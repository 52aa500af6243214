#include "masterdata/look_up.h"

#include <algorithm>
#include <string>
#include <vector>

#include "masterdata/sql.h"
#include "masterdata/tables.h"

namespace tandril::masterdata {
namespace {

using Record = std::vector<std::string>;

bool hasRow(platform::Connection& connection, std::string_view sql) {
    bool found = false;
    connection.query(
        sql, [](const Record&) {},
        [&](const Record&) {
            found = true;
            return false;
        });
    return found;
}

}  // namespace

bool hasValue(platform::Connection& connection, std::string_view field, std::string_view value) {
    const Table& table = checkTable(field);
    std::string sql("select * from ");
    sql += table.name;
    sql += " where ";
    sql += table.keyColumn;
    sql += " = ";
    appendLiteral(sql, value);
    return hasRow(connection, sql);
}

bool hasObject(platform::Connection& connection, std::string_view configuration,
               std::string_view object) {
    std::string sql("select * from OBJECTS where CCFG =");
    appendLiteral(sql, configuration);
    sql += " and CROB = ";
    appendLiteral(sql, object);
    // The database may compare in another way than exactly, so its answer is looked at again.
    Record columns;
    bool found = false;
    connection.query(
        sql, [&](const Record& names) { columns = names; },
        [&](const Record& record) {
            const auto column = std::find(columns.begin(), columns.end(), objectColumn);
            found = column != columns.end() &&
                    record[static_cast<std::size_t>(column - columns.begin())] == object;
            return !found;
        });
    return found;
}

bool hasObjectNumber(platform::Connection& connection, std::string_view configuration,
                     std::string_view number) {
    std::string sql("Select * from OBJECTS where CCFG = ");
    appendLiteral(sql, configuration);
    sql += " and OSEQ = ";
    appendLiteral(sql, number);
    return hasRow(connection, sql);
}

}  // namespace tandril::masterdata
