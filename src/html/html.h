#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

// The pieces of markup that every list, form and window is composed of. Values and labels go into
// the markup as they are, unescaped: the page reads them that way. Odd closings, doubled blanks and
// unquoted attributes are part of the contract with the page's script and style sheet; they stand
// in the constants of the module that needs them.
namespace tandril::html {

// The parts, one behind the other.
std::string joined(std::initializer_list<std::string_view> parts);

// The value in double-quote characters.
std::string quoted(std::string_view value);

// Values in double-quote characters, separated by commas without blanks.
std::string arguments(std::initializer_list<std::string_view> values);

// A call of one of the page's functions as an attribute value: `javascript:name(arguments)`. The
// arguments come as they are written.
std::string scriptCall(std::string_view function, std::string_view arguments);

// `<td>content</td>`
std::string cell(std::string_view content);

// The widths of the columns of every list; some lists write all seven, some only the first four.
inline constexpr std::string_view firstFourColumns =
    "<COL WIDTH=120> <COL WIDTH=120><COL WIDTH=150> <COL WIDTH=150>";
inline constexpr std::string_view lastThreeColumns =
    "<COL WIDTH=120> <COL WIDTH=120> <COL WIDTH=120>";

inline constexpr std::string_view panelRow = "<tr><td width=100%>";
// Closes a row that panelRow opened together with the table around it.
inline constexpr std::string_view panelRowClosing = "</td></tr></table>";

// What the title row of a panel offers.
enum class PanelButtons { MinimizeAndClose, Close };

// The title row that opens every panel. `panel` is the id of the container that the buttons act on.
std::string panelTitle(PanelButtons buttons, std::string_view title, std::string_view panel);

}  // namespace tandril::html
