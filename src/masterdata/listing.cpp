#include "masterdata/listing.h"

#include "masterdata/sql.h"
#include "masterdata/tables.h"
#include "masterdata/window.h"

namespace tandril::masterdata {
namespace {

constexpr std::string_view noDatabase = "SLBEU0308";
constexpr std::string_view noTable = "SLBEU0309";
constexpr std::string_view noRecords = "SLBUE9150";
constexpr std::string_view container = "divList";

void appendRow(std::string& html, const std::vector<std::string>& columns,
               const std::vector<std::string>& record) {
    html += "<tr>";
    for (std::size_t index = 0; index < columns.size(); ++index) {
        if (isShown(columns[index])) {
            html += "<td nowrap>&nbsp;";
            html += record[index];
            html += "</td>";
        }
    }
    html += "</tr>";
}

// Appends the header and all records, and returns whether there were any.
bool appendRows(std::string& html, const Source& source, const Table& table) {
    std::vector<std::string> columns;
    bool hasRecords = false;
    source.connection().query(
        selectAll(table.name), [&](const std::vector<std::string>& names) { columns = names; },
        [&](const std::vector<std::string>& record) {
            if (!hasRecords) {
                html += headerRow(source.mapper, columns);
                hasRecords = true;
            }
            appendRow(html, columns, record);
            return true;
        });
    return hasRecords;
}

}  // namespace

std::string listing(const Source& source, std::string_view code) {
    if (!source.hasDatabase) {
        return std::string(messageText(source.mapper, noDatabase));
    }
    const Table* table = tableOfCode(code);
    if (table == nullptr) {
        return std::string(messageText(source.mapper, noTable));
    }
    std::string html(windowOpening);
    html += windowFrame(source.mapper, table->titleCode, container);
    if (!appendRows(html, source, *table)) {
        html += messageRow(source.mapper, noRecords);
    }
    html += windowClosing;
    return html;
}

}  // namespace tandril::masterdata
