#include "enterprise/master_tables.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace tandril::enterprise {
namespace {

// The values of one CSV line: separated by commas, in double quotes where a value holds a comma or
// a quote (which is then doubled). Line breaks inside a value are not used by our files.
std::vector<std::string> splitLine(std::string_view line) {
    std::vector<std::string> values(1);
    bool quoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char c = line[at];
        if (c == '"' && quoted && at + 1 < line.size() && line[at + 1] == '"') {
            values.back() += c;
            ++at;
        } else if (c == '"') {
            quoted = !quoted;
        } else if (c == ',' && !quoted) {
            values.emplace_back();
        } else {
            values.back() += c;
        }
    }
    return values;
}

std::vector<MasterTables::Row> readTable(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::string line;
    if (!in || !std::getline(in, line)) {
        throw std::runtime_error("Cannot read the master data table " + file.string());
    }
    const std::vector<std::string> columns = splitLine(line);
    std::vector<MasterTables::Row> rows;
    while (std::getline(in, line)) {
        const std::vector<std::string> values = splitLine(line);
        if (values.size() != columns.size()) {
            throw std::runtime_error("The master data table " + file.string() + " has a line of " +
                                     std::to_string(values.size()) + " values: " + line);
        }
        MasterTables::Row& row = rows.emplace_back();
        for (std::size_t at = 0; at < columns.size(); ++at) row[columns[at]] = values[at];
    }
    return rows;
}

}  // namespace

MasterTables MasterTables::load(const std::filesystem::path& folder) {
    MasterTables tables;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".csv") continue;
        tables.tables_[entry.path().stem().string()] = readTable(entry.path());
    }
    return tables;
}

bool MasterTables::has(std::string_view table, const std::vector<Condition>& conditions) const {
    const auto matches = [&conditions](const Row& row) {
        return std::ranges::all_of(conditions, [&row](const Condition& condition) {
            const auto value = row.find(condition.first);
            return value != row.end() && value->second == condition.second;
        });
    };
    return std::ranges::any_of(rows(table), matches);
}

const std::vector<MasterTables::Row>& MasterTables::rows(std::string_view table) const {
    static const std::vector<Row> none;
    const auto found = tables_.find(table);
    return found == tables_.end() ? none : found->second;
}

void MasterTables::add(std::string_view table, Row row) {
    tables_[std::string(table)].push_back(std::move(row));
}

}  // namespace tandril::enterprise
