#include "forms/drop_downs.h"

#include "html/html.h"
#include "xml/node.h"

namespace tandril::forms {
namespace {

std::string option(std::string_view value, std::string_view text) {
    return html::joined({optionOpening(value), text, "</OPTION>"});
}

}  // namespace

std::string optionOpening(std::string_view value) {
    return html::joined({"<OPTION value=", value, ">"});
}

std::string orderOptions(const store::OrderStore& store) {
    std::string options;
    for (const xml::Node order : store.candidates(store::Section::Orders)) {
        const std::string_view number = xml::attribute(order, store::orderKey);
        options += option(number, number);
    }
    return options;
}

std::string activityOptions(const store::OrderStore& store, std::string_view order) {
    std::string options;
    for (const xml::Node group : store.candidates(store::Section::Activities)) {
        if (xml::attribute(group, store::groupOrderKey) != order) {
            continue;
        }
        for (const xml::Node activity : xml::elements(group)) {
            const std::string_view number = xml::attribute(activity, store::activityKey);
            options += option(number, html::joined({order, " - ", number}));
        }
    }
    return options;
}

}  // namespace tandril::forms
