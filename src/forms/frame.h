#pragma once

#include <span>
#include <string>
#include <string_view>

#include "forms/kinds.h"
#include "forms/row.h"

// What stands around the rows of a form.
namespace tandril::forms {

// Closes a form and the table of its rows.
inline constexpr std::string_view formClosing = "</table></form></td></tr>";

// The table and the title row of the panel that shows details.
std::string panelOpening(std::string_view title);

std::string formOpening(std::string_view name);

// The rows that show the first parts of the key, one for each message code.
std::string keyRows(const mapper::FieldMapper& mapper, std::span<const std::string_view> labelCodes,
                    Level level, const RecordKey& key);

// A button that hands a form to one of the page's functions, whose call comes as it is written.
// Some are found by an id, others have "".
std::string button(std::string_view id, std::string_view title, std::string_view call);

// The button that hands the form's values to the store. `mode` tells the page whether the record is
// new.
std::string saveButton(const mapper::FieldMapper& mapper, std::string_view id, const FormKind& kind,
                       const RecordKey& key, FormMode mode);

inline constexpr std::string_view saveId = "btnSave";
inline constexpr std::string_view saveLabel = "SLBEU0284";

}  // namespace tandril::forms
