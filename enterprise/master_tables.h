#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tandril::enterprise {

// The master data tables as rows of text, one CSV file "TABLE.csv" per table whose first line names
// the columns.
class MasterTables {
  public:
    using Row = std::map<std::string, std::string, std::less<>>;
    using Condition = std::pair<std::string_view, std::string_view>;

    // Reads every CSV file of the folder. Throws std::runtime_error that names the file when one
    // cannot be read or a line has another number of values than the first.
    static MasterTables load(const std::filesystem::path& folder);

    // Whether a row of the table has all these values; false for an unknown table or column.
    bool has(std::string_view table, const std::vector<Condition>& conditions) const;

    // The rows of a table in the order of the file; none for an unknown table.
    const std::vector<Row>& rows(std::string_view table) const;

    void add(std::string_view table, Row row);

  private:
    std::map<std::string, std::vector<Row>, std::less<>> tables_;
};

}  // namespace tandril::enterprise
