#pragma once

#include <string>
#include <string_view>

#include "mapper/field_mapper.h"

// The parts of lists that depend on the field mapper only.
namespace tandril::mapper {

struct ColumnHeader {
    std::string html;  // the column layout and the header row
    int columns = 0;   // header cells
};

// The header row of a section's list. The layout has seven columns whatever the number of cells.
ColumnHeader columnHeader(const FieldMapper& mapper, std::string_view section);

// Appends the cells of a list row, for the fields of a record of the section that are list columns.
// `form` is the context word that a hyperlink hands to the page.
void appendListCells(std::string& html, const FieldMapper& mapper, std::string_view section,
                     xml::Node record, std::string_view form);

// The cell with the display text of a code; an unknown code shows as an empty cell.
std::string codeCell(const FieldMapper& mapper, std::string_view field, std::string_view code);

}  // namespace tandril::mapper
