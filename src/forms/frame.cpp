#include "forms/frame.h"

#include <cstddef>
#include <vector>

#include "html/html.h"

namespace tandril::forms {
namespace {

constexpr std::string_view container = "divDetails";
constexpr std::string_view tableOpening =
    "<table width=100% border=0 cellspacing=0 cellpadding=0 class=details>";

}  // namespace

std::string panelOpening(std::string_view title) {
    return html::joined(
        {tableOpening, html::panelTitle(html::PanelButtons::Close, title, container)});
}

std::string formOpening(std::string_view name) {
    return html::joined(
        {html::panelRow, "<form name=", name, "><table width=100% border=0 class=details>"});
}

std::string keyRows(const mapper::FieldMapper& mapper, std::span<const std::string_view> labelCodes,
                    Level level, const RecordKey& key) {
    const std::vector<std::string_view> parts = keyParts(level, key);
    std::string rows;
    for (std::size_t i = 0; i < labelCodes.size(); ++i) {
        rows += textRow(label(mapper, labelCodes[i]), parts[i]);
    }
    return rows;
}

std::string button(std::string_view id, std::string_view title, std::string_view call) {
    const std::string idAttribute = id.empty() ? "" : html::joined({" id=", id});
    return html::joined(
        {"<input", idAttribute, " type=button value=", title, " onclick=", call, ">"});
}

std::string saveButton(const mapper::FieldMapper& mapper, std::string_view id, const FormKind& kind,
                       const RecordKey& key, FormMode mode) {
    return button(
        id, label(mapper, saveLabel),
        html::scriptCall("saveObject", html::arguments({kind.word, key.order, key.activity,
                                                        key.line, modeName(mode)})));
}

}  // namespace tandril::forms
