#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The compact date-time stamps of fields of type "u": year, month and day as eight digits, one
// separator, hour, minute and second as six digits. Positions count characters, not bytes; what a
// short stamp lacks is empty.
namespace tandril::mapper {

// `count` characters of the stamp from position `first`, counted from 1.
std::string_view stampPart(std::string_view stamp, std::size_t first, std::size_t count);

// "11/15/2002": month, day and year.
std::string monthDayYear(std::string_view stamp);

// "1030": hour and minute.
std::string_view hourMinute(std::string_view stamp);

}  // namespace tandril::mapper
