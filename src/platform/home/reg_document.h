#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/home/reg_encoding.h"

// A registry file as text: every line is kept as it stands, and those that mean a value carry that
// value beside it.
namespace tandril::platform {

enum class RegType {
    None,     // the line is no value: a key, a comment, a blank line or one that the editor ignores
    Text,     // "text"
    HexText,  // hex(1): or hex(2): with UTF-16 text; its data is text all the same
    Number,   // dword:
    Other,    // any other data, never interpreted
};

// One value or one line without a value. `head` + `data` + `tail` is the text in the file.
struct RegLine {
    std::string head;  // up to the data, or the whole line
    std::string data;
    std::string tail;  // behind the data: blanks, a comment, the line end
    RegType type = RegType::None;
    std::string name;   // "" for the default value
    std::string value;  // text in UTF-8, a number in decimal, "" for Other
};

// A key with the lines below it.
struct RegSection {
    std::string key;     // "HKEY_LOCAL_MACHINE\SOFTWARE"; "" for what is no key ("[-...]")
    std::string folded;  // the key in lower case
    std::vector<RegLine> lines;
};

struct RegDocument {
    RegEncoding encoding = RegEncoding::Utf8;
    std::string lineEnd = "\r\n";
    std::vector<RegSection> sections;  // the first one is what stands before the first key
};

inline constexpr std::string_view regHeader = "Windows Registry Editor Version 5.00";

// Reads a file. Throws Fault with the number of the line and the reason when it is malformed.
RegDocument parseRegDocument(std::string_view bytes);

// The file's bytes; those that were parsed, as far as nothing was changed.
std::string serializeRegDocument(const RegDocument& document);

// Text and data of values as they stand in a file.
std::string quoteReg(std::string_view text);
std::string formatRegNumber(std::uint32_t number);
// UTF-16 bytes of the text with its end mark, broken into lines as the editor does. `prefix` is
// "hex(2):", `column` the place where the data begins.
std::string formatRegHexText(std::string_view prefix, std::string_view text, std::size_t column,
                             std::string_view lineEnd);

}  // namespace tandril::platform
