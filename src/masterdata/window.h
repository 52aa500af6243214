#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mapper/field_mapper.h"

// The parts that the windows of the master data share.
namespace tandril::masterdata {

// Opens the table around a window.
inline constexpr std::string_view windowOpening =
    "<table width=100% border=0 cellspacing=0 cellpadding=0>";
// Closes the table of the records and everything around it.
inline constexpr std::string_view windowClosing = "</table></td></tr></table>";
// Closes only the table around a window that shows a message instead.
inline constexpr std::string_view messageClosing = "</table>";

// The title and the opening of the table of the records. `container` is the id of the page's
// element that the close button acts on.
std::string windowFrame(const mapper::FieldMapper& mapper, std::string_view titleCode,
                        std::string_view container);

// A row that consists of a message.
std::string messageRow(const mapper::FieldMapper& mapper, std::string_view code);

// A row with the labels of the columns that are shown.
std::string headerRow(const mapper::FieldMapper& mapper, const std::vector<std::string>& columns);

bool isShown(std::string_view column);
// The label of a column; its own name where it has none.
std::string_view columnLabel(const mapper::FieldMapper& mapper, std::string_view column);
// The text of a message code; "" for an unknown one.
std::string_view messageText(const mapper::FieldMapper& mapper, std::string_view code);

}  // namespace tandril::masterdata
