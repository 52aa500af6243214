#pragma once

#include <string_view>

namespace tandril::platform::odbc {

// Throws Fault unless the text is one SQL statement with closed literals: no zero character, and
// nothing but blanks behind a semicolon that stands outside of a literal.
void requireSingleStatement(std::string_view sql);

// The beginning of a statement, for messages.
std::string_view shown(std::string_view sql);

}  // namespace tandril::platform::odbc
