#include "forms/new_row.h"

#include "forms/fields.h"
#include "forms/status_select.h"
#include "html/html.h"

namespace tandril::forms {
namespace {

// The page relies on a blank in front of these cells, and on none in forms of existing records.
constexpr std::string_view cellBlank = " ";

std::string emptyChoice(const FormField& field) {
    return statusSelect(field, FormMode::New);
}

std::string emptyStamp(const FormField& field) {
    return html::joined({inputOpening("10"), field.name, ">", dateHint,
                         "<input type=text size=4 id=", field.name, timeSuffix, ">", timeHint});
}

std::string emptyLongText(const FormField& field) {
    return html::joined({"<td>&nbsp;<textarea rows=4 cols=30 id=", field.name, "></textarea>"});
}

std::string emptyText(const FormField& field) {
    const bool isOfCostLine = store::costTypeOf(field.form.section) != nullptr;
    if (isOfCostLine && field.name == fields::activityDescription) {
        return html::joined({"<td>", field.value});
    }
    const bool isWide = field.name == fields::serviceItem || field.name == fields::referenceA;
    return html::joined({inputOpening(isWide ? "30" : "20"), field.name, ">"});
}

constexpr DataTypeCell emptyInputs[] = {
    {codeType, emptyChoice},
    {stampType, emptyStamp},
    {longTextType, emptyLongText},
    {textType, emptyText},
};

// An activity's object and its configuration are chosen together; the page fills them in.
bool isFilledByPage(const FormField& field) {
    return field.form.section == store::Section::Activities &&
           (field.name == fields::configuration || field.name == fields::objectNumber);
}

std::string rowFilledByPage(const FormField& field) {
    return html::joined({"<tr>", cellBlank, "<td nowrap>&nbsp;", field.properties.label, "</td>",
                         cellBlank, "<td>&nbsp;<input disabled=true type=text size=10 id=",
                         field.name, " value=", html::quoted(field.value), ">", rowClosing});
}

}  // namespace

std::string newRow(const FormField& field) {
    if (!field.properties.isNew) {
        return hiddenRow(field, cellBlank);
    }
    if (isFilledByPage(field)) {
        return rowFilledByPage(field);
    }
    return html::joined({rowOpening(field),
                         cellWriter(emptyInputs, field.properties.dataType)(field),
                         zoomTrigger(field), rowClosing});
}

}  // namespace tandril::forms
