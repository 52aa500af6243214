#pragma once

#include <span>
#include <string>
#include <string_view>

#include "mapper/field_mapper.h"
#include "store/sections.h"

// The pieces that the rows of all forms share.
namespace tandril::forms {

// Whether a form shows a record of the store or makes a new one. The page is told the mode's name.
enum class FormMode { Modify, New };
std::string_view modeName(FormMode mode);

// The form that a row stands in.
struct FormContext {
    const mapper::FieldMapper& mapper;
    store::Section section;  // defines the fields
    std::string formName;
};

// One field of a form.
struct FormField {
    const FormContext& form;
    std::string_view name;
    std::string_view value;
    mapper::FieldProperties properties;
};
FormField formField(const FormContext& form, std::string_view name, std::string_view value);

// What writes the cell of a field, up to what follows the input.
using CellWriter = std::string (*)(const FormField& field);

struct DataTypeCell {
    std::string_view dataType;
    CellWriter write;
};
// The writer of the field's data type; the last one, whatever its type, when none has it.
CellWriter cellWriter(std::span<const DataTypeCell> cells, std::string_view dataType);

inline constexpr std::string_view codeType = "e";
inline constexpr std::string_view stampType = "u";
inline constexpr std::string_view longTextType = "t";
inline constexpr std::string_view textType = "s";

inline constexpr std::string_view dateHint = "<small><i>mm/dd/yyyy</i></small>";
inline constexpr std::string_view timeHint = "<small><i>hhmm</i></small>";
// Behind a field's name: the id of the time input beside the date input.
inline constexpr std::string_view timeSuffix = "_time";

inline constexpr std::string_view rowClosing = "</td></tr>";
// Ends the rows of fields in a creation form.
inline constexpr std::string_view rulerRow = "<tr><td colspan=2><hr></td></tr>";

// The text of a message code; "" for an unknown one.
std::string_view label(const mapper::FieldMapper& mapper, std::string_view code);

// `<tr><td nowrap>&nbsp;LABEL</td>`
std::string rowOpening(const FormField& field);

// `<td>&nbsp;<input type=text size=10 id=`
std::string inputOpening(std::string_view size);

// The row of a field that travels with the form unseen. The page's two scripts expect it with
// different blanks in front of the cells.
std::string hiddenRow(const FormField& field, std::string_view blank);

// What opens the choice of a value from master data; "" for a field that has none.
std::string zoomTrigger(const FormField& field);

// `<tr><td>&nbsp;LABEL</td><td>&nbsp;VALUE</td></tr>`
std::string textRow(std::string_view label, std::string_view value);

}  // namespace tandril::forms
