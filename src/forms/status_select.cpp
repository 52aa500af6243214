#include "forms/status_select.h"

#include <cstddef>
#include <vector>

#include "forms/fields.h"
#include "html/html.h"

namespace tandril::forms {
namespace {

using store::status::closed;
using store::status::completed;
using store::status::open;

// What an activity's status may become, by position in the value list, which the field mapper fills
// in the order open, completed, closed.
struct StatusChoice {
    FormMode mode;
    std::string_view current;
    std::size_t entry;
    bool isSelected;
};

// The rows differ without a pattern; the page's users know them so.
constexpr StatusChoice statusChoices[] = {
    {FormMode::Modify, open, 0, true},       {FormMode::Modify, open, 1, false},
    {FormMode::Modify, completed, 1, false}, {FormMode::Modify, closed, 2, true},
    {FormMode::New, open, 0, true},          {FormMode::New, open, 1, false},
    {FormMode::New, completed, 0, true},     {FormMode::New, completed, 1, false},
    {FormMode::New, closed, 2, false},       {FormMode::New, closed, 1, false},
};

std::string option(const mapper::ValueListEntry& entry, bool isSelected) {
    return html::joined(
        {"<OPTION value=", entry.id, isSelected ? " selected>" : " >", entry.value});
}

std::string activityOptions(const std::vector<mapper::ValueListEntry>& entries,
                            std::string_view current, FormMode mode) {
    std::string options;
    for (const StatusChoice& choice : statusChoices) {
        if (choice.mode == mode && choice.current == current && choice.entry < entries.size()) {
            options += option(entries[choice.entry], choice.isSelected);
        }
    }
    return options;
}

std::string allOptions(const std::vector<mapper::ValueListEntry>& entries,
                       std::string_view current) {
    std::string options;
    for (const mapper::ValueListEntry& entry : entries) {
        options += option(entry, entry.id == current);
    }
    return options;
}

std::string options(const FormField& field, FormMode mode) {
    const std::vector<mapper::ValueListEntry> entries = field.form.mapper.valueList(field.name);
    if (field.name == fields::activityStatus) {
        return activityOptions(entries, field.value, mode);
    }
    if (field.name == fields::orderStatus && mode == FormMode::New) {
        return entries.empty() ? "" : option(entries.front(), true);
    }
    return allOptions(entries, field.value);
}

}  // namespace

std::string statusSelect(const FormField& field, FormMode mode) {
    const std::string_view opening =
        field.name == fields::orderStatus ? "<SELECT disabled=true name=" : "<SELECT name=";
    return html::joined({"<td>&nbsp;", opening, field.name, " id=", field.name, ">",
                         options(field, mode), "</SELECT></td>"});
}

}  // namespace tandril::forms
