#include "masterdata/transfer.h"

#include "masterdata/sql.h"
#include "platform/fault.h"

namespace tandril::masterdata {
namespace {

// The text with every `quote` doubled, between quotes.
std::string between(char quote, std::string_view text) {
    std::string quoted(1, quote);
    for (const char c : text) {
        if (c == quote) {
            quoted += quote;
        }
        quoted += c;
    }
    quoted += quote;
    return quoted;
}

std::string insertion(const Table& table, const std::vector<std::string>& record) {
    std::string sql("INSERT INTO ");
    sql += table.name;
    std::string_view separator = " VALUES (";
    for (const std::string& value : record) {
        sql += separator;
        sql += value.empty() ? "NULL" : between('\'', value);
        separator = ", ";
    }
    return sql + ")";
}

}  // namespace

std::vector<std::string> standardColumns(const Table& table) {
    if (table.name == objectsTable) {
        return {std::string(companyColumn), std::string(configurationColumn),
                std::string(objectColumn), std::string(objectNumberColumn), "DSCA"};
    }
    return {std::string(companyColumn), std::string(table.keyColumn), "DSCA"};
}

void createTable(platform::Connection& database, const Table& table,
                 const std::vector<std::string>& columns) {
    std::string sql("CREATE TABLE ");
    sql += table.name;
    std::string_view separator = " (";
    for (const std::string& column : columns) {
        sql += separator;
        sql += between('"', column) + " TEXT";
        separator = ", ";
    }
    database.execute(sql + ")");
}

bool copyTable(platform::Connection& source, platform::Connection& target, const Table& table,
               const std::function<void()>& copied) {
    bool exists = false;
    try {
        source.query(
            selectAll(table.name),
            [&](const std::vector<std::string>& columns) {
                exists = true;
                createTable(target, table, columns);
            },
            [&](const std::vector<std::string>& record) {
                target.execute(insertion(table, record));
                copied();
                return true;
            });
    } catch (const Fault&) {
        if (exists) {
            throw;
        }
    }
    return exists;
}

}  // namespace tandril::masterdata
