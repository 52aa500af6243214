#include "platform/home/access_connection.h"

#include "platform/ascii.h"
#include "platform/fault.h"
#include "platform/home/whole_table_select.h"

namespace tandril::platform {
namespace {

struct ColumnCondition {
    std::size_t column;
    std::string_view value;
};

std::vector<ColumnCondition> resolve(const WholeTableSelect& select,
                                     const std::vector<std::string>& columns) {
    std::vector<ColumnCondition> conditions;
    for (const auto& [column, value] : select.conditions) {
        std::size_t index = 0;
        while (index < columns.size() && foldAscii(columns[index]) != foldAscii(column)) ++index;
        if (index == columns.size()) {
            throw Fault("the table " + select.table + " has no column " + column);
        }
        conditions.push_back({index, value});
    }
    return conditions;
}

bool matches(const std::vector<ColumnCondition>& conditions,
             const std::vector<std::string>& record) {
    for (const auto& [column, value] : conditions) {
        if (value.empty() || record[column] != value) return false;
    }
    return true;
}

}  // namespace

void AccessConnection::query(std::string_view sql,
                             const std::function<void(const std::vector<std::string>&)>& columns,
                             const std::function<bool(const std::vector<std::string>&)>& row) {
    const auto select = parseWholeTableSelect(sql);
    if (!select) {
        throw Fault("the Access database \"" + shown_ + "\" cannot be asked: " + std::string(sql));
    }
    std::vector<ColumnCondition> conditions;
    tables_->query(
        "SELECT * FROM " + select->table,
        [&](const std::vector<std::string>& names) {
            conditions = resolve(*select, names);
            columns(names);
        },
        [&](const std::vector<std::string>& record) {
            return !matches(conditions, record) || row(record);
        });
}

void AccessConnection::execute(std::string_view sql) {
    throw Fault("the Access database \"" + shown_ +
                "\" can only be read here, not: " + std::string(sql.substr(0, sql.find(' '))));
}

}  // namespace tandril::platform
