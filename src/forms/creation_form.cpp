#include "forms/creation_form.h"

#include <algorithm>
#include <array>

#include "forms/drop_downs.h"
#include "forms/fields.h"
#include "forms/frame.h"
#include "forms/new_row.h"
#include "forms/row.h"
#include "html/html.h"
#include "xml/node.h"

namespace tandril::forms {
namespace {

constexpr std::array keyFields{fields::order, fields::activity, fields::line};
constexpr std::string_view createLabel = "SLBEU0285";
constexpr std::string_view orderLabel = "SLBEU0000";
constexpr std::string_view activityLabel = "SLBEU0041";

// The cell around the buttons' cells stays open until they are closed.
constexpr std::string_view buttonsOpening = "<tr><td align=right><table><tr><td>";
constexpr std::string_view buttonsClosing = "</td></tr></table></td></tr></table>";

// This form's texts are the page's own, not message texts. The order's cell has the id of the
// activity's, and the first cell of the last row stays open; the page relies on both.
constexpr std::string_view newMaterialTitle = "Create Material Cost";
constexpr std::string_view newMaterialDropDowns =
    "<tr><td>&nbsp;Service Order</td><td id=tdSelectActivity>&nbsp;&nbsp;"
    "<select id=dropOrder onchange=getActivityDrop()></select></td></tr>"
    "<tr><td>&nbsp;Service Activity</td><td>&nbsp;&nbsp;"
    "<select id=dropActivity></select></td></tr>"
    "<tr><td>&nbsp;Material Line Id</td><td>&nbsp;&nbsp;";
constexpr std::string_view newMaterialButton = "<tr><td>&nbsp;<td><td align=right>";

bool isKeyField(std::string_view name) {
    return std::find(keyFields.begin(), keyFields.end(), name) != keyFields.end();
}

// What a field of a new record holds.
std::string_view initialValue(std::string_view name, std::string_view activityDescription) {
    if (name == fields::orderStatus || name == fields::activityStatus) {
        return store::status::open;
    }
    return name == fields::activityDescription ? activityDescription : "";
}

std::string fieldRows(const FormContext& form, std::string_view activityDescription) {
    std::string rows;
    for (const std::string_view name : form.mapper.fieldNames(store::sectionName(form.section))) {
        if (!isKeyField(name)) {
            rows += newRow(formField(form, name, initialValue(name, activityDescription)));
        }
    }
    return rows + std::string(rulerRow);
}

std::string buttonCell(std::string_view button) {
    return html::joined({"<td align=right>", button, "</td>"});
}

std::string createButton(const mapper::FieldMapper& mapper, const FormKind& kind,
                         const RecordKey& parent) {
    const std::string quotedParent = html::arguments({parent.order, parent.activity});
    return button("", label(mapper, createLabel),
                  html::scriptCall("newObject", html::joined({kind.number, ",", quotedParent})));
}

std::string saveButtonCell(const mapper::FieldMapper& mapper, const FormKind& kind,
                           const RecordKey& key) {
    return buttonCell(saveButton(mapper, saveId, kind, key, FormMode::New));
}

RecordKey newKey(Level level, const RecordKey& parent, std::string_view number) {
    std::string own(number);
    switch (level) {
        case Level::Order:
            return {own, "", ""};
        case Level::Activity:
            return {parent.order, own, ""};
        case Level::Line:
            break;
    }
    return {parent.order, parent.activity, own};
}

}  // namespace

std::string creationForm(const mapper::FieldMapper& mapper, const FormKind& kind,
                         const RecordKey& parent, std::string_view number,
                         std::string_view activityDescription) {
    const RecordKey key = newKey(kind.level, parent, number);
    const FormContext form{mapper, kind.section, formName(kind, key)};
    return html::joined({panelOpening(label(mapper, kind.creationTitle)),
                         formOpening(form.formName),
                         keyRows(mapper, kind.creationKeyLabels, kind.level, key),
                         fieldRows(form, activityDescription), formClosing, buttonsOpening,
                         buttonCell(createButton(mapper, kind, parent)),
                         saveButtonCell(mapper, kind, key), buttonsClosing});
}

std::string activityDescription(const store::OrderStore& store, const RecordKey& activity) {
    return xml::text(
        xml::child(store.activity(activity.order, activity.activity), fields::activityDescription));
}

std::string newActivityForm(const mapper::FieldMapper& mapper, std::string_view number,
                            std::string_view orderRow) {
    const FormKind& kind = activityKind();
    const FormContext form{mapper, kind.section, formName(kind, number)};
    const std::string createActivity =
        html::scriptCall("CreateActivity", html::arguments({number, form.formName}));
    return html::joined({panelOpening(label(mapper, kind.creationTitle)),
                         formOpening(form.formName), textRow(label(mapper, activityLabel), number),
                         orderRow, fieldRows(form, ""), formClosing, "<tr><td align=right>",
                         button(saveId, label(mapper, saveLabel), createActivity),
                         html::panelRowClosing});
}

std::string orderSelectRow(const mapper::FieldMapper& mapper, const store::OrderStore& store) {
    std::string row = html::joined({"<tr><td>&nbsp;", label(mapper, orderLabel),
                                    "</td><td><SELECT name=", fields::order, ">"});
    for (const xml::Node order : store.candidates(store::Section::Orders)) {
        const std::string_view number = xml::attribute(order, store::orderKey);
        row += html::joined({optionOpening(number), number});
    }
    return row + "</SELECT></td></tr>";
}

std::string newMaterialForm(const mapper::FieldMapper& mapper, std::string_view number) {
    const FormKind& kind = materialKind();
    const FormContext form{mapper, kind.section, formName(kind, number)};
    const RecordKey key{"", "", std::string(number)};
    return html::joined({panelOpening(newMaterialTitle), formOpening(form.formName),
                         newMaterialDropDowns, number, rowClosing, fieldRows(form, ""),
                         newMaterialButton, saveButton(mapper, "", kind, key, FormMode::New),
                         rowClosing, formClosing, "</table>"});
}

std::string newHourRegistrationForm(const mapper::FieldMapper& mapper, std::string_view number) {
    const FormKind& kind = hourRegistrationKind();
    const FormContext form{mapper, kind.section, formName(kind, number)};
    const RecordKey key{"", "", std::string(number)};
    return html::joined({panelOpening(label(mapper, kind.creationTitle)),
                         formOpening(form.formName), fieldRows(form, ""), formClosing,
                         buttonsOpening, saveButtonCell(mapper, kind, key), buttonsClosing});
}

}  // namespace tandril::forms
