#include "views/rows.h"

#include <algorithm>

#include "html/html.h"

namespace tandril::views {
namespace {

// The last argument of a link in a list: the record is opened to be looked at, not to correct an
// upload error.
constexpr std::string_view openedFromList = "2";

}  // namespace

std::string link(std::string_view id, std::string_view function, const Reference& reference,
                 std::string_view text) {
    const std::string call = html::scriptCall(
        function, html::arguments({reference.kind, reference.order, reference.activity,
                                   reference.line, openedFromList}));
    return html::joined({"<span id=", id, " class=links onclick=", call, ">", text, "</span>"});
}

std::string detailLink(std::string_view id, const Reference& reference, std::string_view text) {
    return link(id, "showdetails", reference, text);
}

std::string orderRow(std::string_view order, int columns) {
    return html::joined({"<tr class=orderrow><td colspan=", std::to_string(columns), ">&nbsp;",
                         detailLink(order, {orderKind, order, "", ""}, order), "</td></tr>"});
}

bool isOneOf(std::string_view state, std::span<const std::string_view> states) {
    return std::find(states.begin(), states.end(), state) != states.end();
}

}  // namespace tandril::views
