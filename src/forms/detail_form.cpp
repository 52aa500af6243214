#include "forms/detail_form.h"

#include "forms/cost_line_row.h"
#include "forms/frame.h"
#include "forms/modify_row.h"
#include "forms/row.h"
#include "html/html.h"
#include "xml/node.h"

namespace tandril::forms {
namespace {

constexpr std::string_view linkCell = "<td align=right>";
constexpr std::string_view linkTableOpening = "<tr><td align=right><table class=hyperbutton>";
constexpr std::string_view linkTableClosing = "</table></td></tr>";
constexpr std::string_view linkRowOpening = "<tr class=hyperbutton><td>&nbsp;</td>";
constexpr std::string_view buttonBarOpening =
    "<tr><td width=100%><table border=0 cellspacing=0 cellpadding=0 width=100%><tr>";
constexpr std::string_view deleteId = "btnDelete";
constexpr std::string_view deleteLabel = "SLBEU0282";

// What a record allows.
struct Permissions {
    bool mayEdit;
    bool mayDelete;
    bool hasButtons;
};

bool isHourRegistration(const FormKind& kind) {
    return &kind == &hourRegistrationKind();
}

xml::Node find(const store::OrderStore& store, const FormKind& kind, const RecordKey& key) {
    switch (kind.level) {
        case Level::Order:
            return store.order(key.order);
        case Level::Activity:
            return store.activity(key.order, key.activity);
        case Level::Line:
            break;
    }
    return store.line(kind.section, key.order, key.activity, key.line);
}

bool isClosed(const store::OrderStore& store, const FormKind& kind, const RecordKey& key) {
    return store.orderStatus(key.order) == store::status::closed ||
           (kind.level != Level::Order &&
            store.activityStatus(key.order, key.activity) == store::status::closed);
}

Permissions permissionsOf(const store::OrderStore& store, const FormKind& kind,
                          const RecordKey& key, xml::Node record, bool correctsError) {
    const std::string_view state = store::stateOf(record);
    const bool mayDelete = state == "N";
    // Hour registrations hang on no order, so that none can be closed.
    if (correctsError || isHourRegistration(kind)) {
        return {true, mayDelete, true};
    }
    if (isClosed(store, kind, key)) {
        return {false, mayDelete, false};
    }
    const bool wasSent = state == "MU" || state == "NU";
    return {wasSent || store.orderStatus(key.order) == store::status::open, mayDelete, true};
}

// A link to one of the page's functions. The number of the kind stands bare, without quotes.
std::string link(std::string_view function, std::string_view arguments, std::string_view title) {
    return html::joined(
        {linkCell, "<a href=", html::scriptCall(function, arguments), ">", title, "</a></td>"});
}

std::string newLink(const mapper::FieldMapper& mapper, const FormKind& kind,
                    std::string_view quotedKey) {
    return link("newobject", html::joined({kind.number, ",", quotedKey}),
                label(mapper, kind.newLabel));
}

std::string listLink(const mapper::FieldMapper& mapper, const FormKind& kind,
                     const RecordKey& key) {
    return link("ListCostLines",
                html::arguments({store::costTypeOf(kind.section)->word, key.order, key.activity}),
                label(mapper, kind.listLabel));
}

std::string linkRow(std::string_view cells) {
    return html::joined({"<tr>", cells, "</tr>"});
}

std::string activityLinks(const mapper::FieldMapper& mapper, const RecordKey& key) {
    std::string links(linkTableOpening);
    for (const FormKind& kind : costLineKinds()) {
        links += html::joined({linkRowOpening, listLink(mapper, kind, key),
                               newLink(mapper, kind, html::arguments({key.order, key.activity})),
                               "</tr>"});
    }
    links += linkTableClosing;
    return links;
}

std::string links(const mapper::FieldMapper& mapper, const FormKind& kind, const RecordKey& key) {
    switch (kind.level) {
        case Level::Order:
            return linkRow(newLink(mapper, activityKind(), html::quoted(key.order)));
        case Level::Activity:
            return activityLinks(mapper, key);
        case Level::Line:
            break;
    }
    return linkRow(newLink(mapper, kind, html::arguments({key.order, key.activity})));
}

std::string fieldRows(const FormContext& form, xml::Node record, bool hasCostLineFields,
                      bool isEditable) {
    std::string rows;
    std::string costLineRows;
    for (const xml::Node child : xml::elements(record)) {
        const std::string value = xml::text(child);
        const FormField field = formField(form, child.name(), value);
        if (hasCostLineFields && isCostLineField(field.name)) {
            costLineRows += costLineRow(field, isEditable);
        } else {
            rows += modifyRow(field, isEditable);
        }
    }
    return rows + costLineRows;
}

std::string deleteCell(const mapper::FieldMapper& mapper, const FormKind& kind,
                       const RecordKey& key) {
    const std::string_view costType = kind.level == Level::Line ? kind.word : "";
    return html::joined(
        {linkCell,
         button(deleteId, label(mapper, deleteLabel),
                html::scriptCall("deleteObject",
                                 html::arguments({key.order, key.activity, key.line, costType}))),
         "</td>"});
}

std::string buttonBar(const mapper::FieldMapper& mapper, const FormKind& kind, const RecordKey& key,
                      const Permissions& permissions) {
    return html::joined(
        {buttonBarOpening, linkCell,
         permissions.mayEdit ? saveButton(mapper, saveId, kind, key, FormMode::Modify) : "",
         "</td>", linkCell, "<table><tr>",
         permissions.mayDelete ? deleteCell(mapper, kind, key) : "", "</tr></table></td></tr>",
         "</table>", html::panelRowClosing});
}

}  // namespace

std::optional<std::string> detailForm(const mapper::FieldMapper& mapper,
                                      const store::OrderStore& store, const FormKind& kind,
                                      const RecordKey& key, bool correctsError) {
    const xml::Node record = find(store, kind, key);
    if (!record) {
        return std::nullopt;
    }
    const Permissions permissions = permissionsOf(store, kind, key, record, correctsError);
    const FormContext form{mapper, kind.section, formName(kind, key)};
    return html::joined(
        {panelOpening(label(mapper, kind.detailTitle)), links(mapper, kind, key),
         formOpening(form.formName), keyRows(mapper, kind.detailKeyLabels, kind.level, key),
         fieldRows(form, record, kind.level == Level::Line, permissions.mayEdit), formClosing,
         permissions.hasButtons ? buttonBar(mapper, kind, key, permissions) : "</table>"});
}

std::string emptyDetailForm() {
    return panelOpening("") + "</table>";
}

}  // namespace tandril::forms
