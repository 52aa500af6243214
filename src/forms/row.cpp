#include "forms/row.h"

#include "html/html.h"

namespace tandril::forms {

std::string_view modeName(FormMode mode) {
    return mode == FormMode::Modify ? "Modify" : "New";
}

FormField formField(const FormContext& form, std::string_view name, std::string_view value) {
    return {form, name, value, form.mapper.properties(store::sectionName(form.section), name)};
}

CellWriter cellWriter(std::span<const DataTypeCell> cells, std::string_view dataType) {
    for (const DataTypeCell& cell : cells) {
        if (cell.dataType == dataType) {
            return cell.write;
        }
    }
    return cells.back().write;
}

std::string_view label(const mapper::FieldMapper& mapper, std::string_view code) {
    return mapper.text(code).value_or("");
}

std::string rowOpening(const FormField& field) {
    return html::joined({"<tr><td nowrap>&nbsp;", field.properties.label, "</td>"});
}

std::string inputOpening(std::string_view size) {
    return html::joined({"<td>&nbsp;<input type=text size=", size, " id="});
}

std::string hiddenRow(const FormField& field, std::string_view blank) {
    return html::joined({"<tr style=\"display:none\">", blank, "<td nowrap>&nbsp;",
                         field.properties.label, "</td>", blank, inputOpening("10"),
                         html::quoted(field.name), " value=", html::quoted(field.value), ">",
                         rowClosing});
}

std::string zoomTrigger(const FormField& field) {
    if (!field.properties.hasZoom) {
        return {};
    }
    return html::joined(
        {"<span class=links onclick=",
         html::scriptCall("zoom", html::arguments({field.name, field.form.formName})),
         "><small><strong>...</strong></small></span>"});
}

std::string textRow(std::string_view label, std::string_view value) {
    return html::joined({"<tr><td>&nbsp;", label, "</td><td>&nbsp;", value, rowClosing});
}

}  // namespace tandril::forms
