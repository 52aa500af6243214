#pragma once

#include <array>
#include <span>
#include <string_view>

// The tables of the master data. Everything that differs from one to the next stands in one table
// of them, which listing, zoom, check and synchronisation read.
namespace tandril::masterdata {

struct Table {
    std::string_view code;  // by which the page asks for the whole table
    std::string_view name;
    std::string_view keyColumn;  // often other than the code
    std::string_view titleCode;  // message code of the listing's title
    // The fields of records whose values are keys of this table.
    std::array<std::string_view, 3> fields;
};

// The company that a row belongs to; every table has the column, and it is never shown.
inline constexpr std::string_view companyColumn = "COMP";

// The columns that together are the key of the objects, in this order.
inline constexpr std::string_view objectsTable = "OBJECTS";
inline constexpr std::string_view configurationColumn = "CCFG";
inline constexpr std::string_view objectColumn = "CROB";
inline constexpr std::string_view objectNumberColumn = "OSEQ";

// All 20 tables, in the order in which they are synchronised.
std::span<const Table> tables();

// The table of that code or name; null for an unknown one. Both compare exactly.
const Table* tableOfCode(std::string_view code);
const Table* tableOfName(std::string_view name);

// The table that the field's window shows. Fields that no table names have their values in the
// reference activities.
const Table& zoomTable(std::string_view field);

// The table that the field's values are checked against. The same, but for service items: their
// window shows the reference activities.
const Table& checkTable(std::string_view field);

}  // namespace tandril::masterdata
