#include "forms/modify_row.h"

#include "forms/fields.h"
#include "forms/status_select.h"
#include "html/html.h"
#include "mapper/list.h"
#include "mapper/stamp.h"

namespace tandril::forms {
namespace {

// The page relies on no blank here, and on one in creation forms.
constexpr std::string_view noBlank;

std::string choiceInput(const FormField& field) {
    return statusSelect(field, FormMode::Modify);
}

std::string stampInput(const FormField& field) {
    const bool isEmpty = field.value.empty();
    return html::joined({inputOpening("15"), field.name,
                         " value=", isEmpty ? "" : mapper::monthDayYear(field.value), ">", dateHint,
                         "<input type=text size=4 id=", field.name, timeSuffix,
                         " value=", mapper::hourMinute(field.value), ">", timeHint});
}

std::string longTextInput(const FormField& field) {
    return html::joined(
        {"<td>&nbsp;<textarea rows=4 cols=30 id=", field.name, ">", field.value, "</textarea>"});
}

std::string textInput(const FormField& field) {
    const bool isWide = field.name == fields::serviceItem || field.name == fields::referenceA;
    const bool isNone = field.name == fields::problemPriority && field.value == fields::noNumber;
    return html::joined({inputOpening(isWide ? "30" : "10"), field.name,
                         " value=", html::quoted(isNone ? "" : field.value), ">"});
}

constexpr DataTypeCell inputs[] = {
    {codeType, choiceInput},
    {stampType, stampInput},
    {longTextType, longTextInput},
    {textType, textInput},
};

// A coded field closes its cell itself; the page relies on the closing that follows all the same.
std::string editable(const FormField& field) {
    return html::joined(
        {cellWriter(inputs, field.properties.dataType)(field), zoomTrigger(field), rowClosing});
}

std::string codeText(const FormField& field) {
    const std::string cell = field.name == fields::orderStatus
                                 ? statusSelect(field, FormMode::Modify)
                                 : mapper::codeCell(field.form.mapper, field.name, field.value);
    return cell + "</tr>";
}

std::string hyperlink(const FormField& field) {
    return html::joined({"<td>&nbsp;<a href=",
                         html::scriptCall("hyperlink", html::arguments({field.name, field.value})),
                         ">", field.value, "</a>", rowClosing});
}

std::string stampText(const FormField& field) {
    if (field.value.empty()) {
        return html::joined(
            {"<td>&nbsp;<input disabled=true type=text size=10 id=", field.name, ">", rowClosing});
    }
    return html::joined({"<td>&nbsp;", mapper::monthDayYear(field.value), "&nbsp;&nbsp", dateHint,
                         "&nbsp;", mapper::hourMinute(field.value), rowClosing});
}

std::string plainText(const FormField& field) {
    const bool isNone =
        (field.name == fields::problemPriority || field.name == fields::oldObjectNumber) &&
        field.value == fields::noNumber;
    return html::joined({"<td id=", field.name, ">&nbsp;", isNone ? "" : field.value, rowClosing});
}

std::string readOnly(const FormField& field) {
    if (field.properties.dataType == codeType) {
        return codeText(field);
    }
    if (field.properties.hasHyperlink) {
        return hyperlink(field);
    }
    return field.properties.dataType == stampType ? stampText(field) : plainText(field);
}

}  // namespace

std::string modifyRow(const FormField& field, bool isEditable) {
    if (!field.properties.isFormRow()) {
        return hiddenRow(field, noBlank);
    }
    return rowOpening(field) +
           (isEditable && field.properties.isModifiable ? editable(field) : readOnly(field));
}

}  // namespace tandril::forms
