#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace tandril::test {

// Everything that a query returns.
struct QueryResult {
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> records;
};

inline QueryResult resultOf(platform::Connection& connection, std::string_view sql) {
    QueryResult result;
    connection.query(
        sql, [&](const std::vector<std::string>& names) { result.columns = names; },
        [&](const std::vector<std::string>& record) {
            result.records.push_back(record);
            return true;
        });
    return result;
}

}  // namespace tandril::test
