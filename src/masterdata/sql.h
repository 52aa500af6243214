#pragma once

#include <string>
#include <string_view>

// Texts from outside in SQL statements. They go in as they are, and never get out of the place that
// they were put in: what could is refused before anything is sent.
namespace tandril::masterdata {

// Appends the value between apostrophes. Throws Fault when it holds an apostrophe that is not
// doubled, or a zero character.
void appendLiteral(std::string& sql, std::string_view value);

// Appends the name of a column. Throws Fault unless it consists of letters, digits, underscores
// and characters beyond ASCII, and begins with none of the digits.
void appendColumn(std::string& sql, std::string_view name);

// The query for a whole table.
std::string selectAll(std::string_view table);

}  // namespace tandril::masterdata
