#include "masterdata/zoom.h"

#include <algorithm>

#include "html/html.h"
#include "masterdata/sql.h"
#include "masterdata/tables.h"
#include "masterdata/window.h"
#include "platform/fault.h"

namespace tandril::masterdata {
namespace {

constexpr std::string_view noDatabase = "SLBEU0308";
constexpr std::string_view noRecords = "SLBEU0306";
constexpr std::string_view zoomTitle = "SLBEU0305";
constexpr std::string_view hyperlinkTitle = "SLBEU0304";
constexpr std::string_view container = "divZoomHype";

using Record = std::vector<std::string>;

std::string selectWhere(std::string_view table, std::string_view column, std::string_view value) {
    std::string sql = selectAll(table);
    sql += " WHERE ";
    sql += column;
    sql += " = ";
    appendLiteral(sql, value);
    return sql;
}

std::string zoomQuery(const Table& table, std::string_view value) {
    return table.name == objectsTable ? selectWhere(table.name, configurationColumn, value)
                                      : selectAll(table.name);
}

// The anchor that fills the record's key into the page's form; for an object its number, too.
std::string fillingCell(const Table& table, const Record& columns, const Record& record,
                        std::string_view key) {
    std::string arguments = html::arguments({key, table.keyColumn});
    if (table.name == objectsTable) {
        const auto number = std::find(columns.begin(), columns.end(), objectNumberColumn);
        if (number == columns.end()) {
            throw Fault("the table " + std::string(table.name) + " has no column " +
                        std::string(objectNumberColumn));
        }
        arguments += ',';
        arguments += html::quoted(record[static_cast<std::size_t>(number - columns.begin())]);
    }
    return html::joined(
        {"<td nowrap><a href=", html::scriptCall("FillValues", arguments), ">", key, "</a></td>"});
}

void appendZoomRow(std::string& html, const Table& table, const Record& columns,
                   const Record& record) {
    html += "<tr>";
    for (std::size_t index = 0; index < columns.size(); ++index) {
        if (columns[index] == table.keyColumn) {
            html += fillingCell(table, columns, record, record[index]);
        } else if (isShown(columns[index])) {
            html += html::cell(record[index]);
        }
    }
    html += "</tr>";
}

// The two kinds of window append their records, and return whether there were any.
bool appendZoomRecords(std::string& html, const Source& source, const Table& table,
                       std::string_view value) {
    Record columns;
    bool hasRecords = false;
    source.connection().query(
        zoomQuery(table, value), [&](const Record& names) { columns = names; },
        [&](const Record& record) {
            if (!hasRecords) {
                html += windowFrame(source.mapper, zoomTitle, container);
                html += headerRow(source.mapper, columns);
                hasRecords = true;
            }
            appendZoomRow(html, table, columns, record);
            return true;
        });
    return hasRecords;
}

bool appendHyperlinkRecord(std::string& html, const Source& source, const Table& table,
                           std::string_view value) {
    Record columns;
    bool hasRecord = false;
    source.connection().query(
        selectWhere(table.name, table.keyColumn, value),
        [&](const Record& names) { columns = names; },
        [&](const Record& record) {
            hasRecord = true;
            html += windowFrame(source.mapper, hyperlinkTitle, container);
            for (std::size_t index = 0; index < columns.size(); ++index) {
                if (isShown(columns[index])) {
                    html += "<tr><td nowrap>&nbsp;";
                    html += columnLabel(source.mapper, columns[index]);
                    html += "</td>" + html::cell(record[index]) + "</tr>";
                }
            }
            return false;
        });
    return hasRecord;
}

}  // namespace

std::string fieldWindow(const Source& source, WindowKind kind, std::string_view field,
                        std::string_view value) {
    std::string html(windowOpening);
    if (!source.hasDatabase) {
        html += messageRow(source.mapper, noDatabase);
        html += messageClosing;
        return html;
    }
    const Table& table = zoomTable(field);
    const bool hasRecords = kind == WindowKind::Hyperlink
                                ? appendHyperlinkRecord(html, source, table, value)
                                : appendZoomRecords(html, source, table, value);
    if (!hasRecords) {
        html += messageRow(source.mapper, noRecords);
    }
    html += windowClosing;
    return html;
}

}  // namespace tandril::masterdata
