#pragma once

#include <string>
#include <string_view>

namespace tandril::forms {

// "15/11/2026 11:59:39" for the stamp "20261115 115939": day first, unlike the dates of the forms.
// The time of a stamp without one is midnight. "" for a stamp without a numeric date, of a year
// outside 1971 to 2037 or a month above 12.
std::string convertStamp(std::string_view stamp);

// Whether the stamp converts to a day of the calendar and a time of day.
bool isValidStamp(std::string_view stamp);

}  // namespace tandril::forms
