#include "html/html.h"

namespace tandril::html {
namespace {

// The two forms of the title row differ in their blanks, too.
constexpr std::string_view titleCellWithMinimize =
    "<tr class=titles><td nowrap valign=bottom width=100%>&nbsp;";
constexpr std::string_view titleCell =
    "<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;";

// The doubled blank behind "submit" and the quotes around the blanks of the sign are as the style
// sheet expects them.
std::string titleButton(std::string_view function, std::string_view panel, std::string_view sign) {
    return "<input type=submit  onclick=" + scriptCall(function, quoted(panel)) +
           " value=" + quoted(sign) + ">";
}

}  // namespace

std::string joined(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (const std::string_view part : parts) {
        size += part.size();
    }
    std::string text;
    text.reserve(size);
    for (const std::string_view part : parts) {
        text += part;
    }
    return text;
}

std::string quoted(std::string_view value) {
    std::string text;
    text.reserve(value.size() + 2);
    text += '"';
    text += value;
    text += '"';
    return text;
}

std::string arguments(std::initializer_list<std::string_view> values) {
    std::string text;
    std::size_t size = 0;
    for (const std::string_view value : values) {
        size += value.size() + 3;
    }
    text.reserve(size);
    for (const std::string_view value : values) {
        if (!text.empty()) {
            text += ',';
        }
        text += '"';
        text += value;
        text += '"';
    }
    return text;
}

std::string scriptCall(std::string_view function, std::string_view arguments) {
    return joined({"javascript:", function, "(", arguments, ")"});
}

std::string cell(std::string_view content) {
    return joined({"<td>", content, "</td>"});
}

std::string panelTitle(PanelButtons buttons, std::string_view title, std::string_view panel) {
    const bool minimize = buttons == PanelButtons::MinimizeAndClose;
    std::string text(panelRow);
    text += "<table width=100% border=0 cellspacing=2 cellpadding=0>";
    text += minimize ? titleCellWithMinimize : titleCell;
    text += "<strong>";
    text += title;
    text += "</strong></td><td valign=bottom align=right>";
    if (minimize) {
        text += titleButton("minimize", panel, " _ ");
    }
    text += titleButton("winclose", panel, " x ");
    text += "</td></tr></table></td></tr>";
    return text;
}

}  // namespace tandril::html
