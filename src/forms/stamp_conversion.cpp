#include "forms/stamp_conversion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <optional>

#include "html/html.h"
#include "mapper/stamp.h"

namespace tandril::forms {
namespace {

// Years compare as text.
constexpr std::string_view firstYear = "1971";
constexpr std::string_view lastYear = "2037";
constexpr int lastMonth = 12;

// The parts of a stamp that converts.
struct Moment {
    std::string_view year, month, day, hour, minute, second;
};

// The number that the digits 0 to 9 write; nothing for any other text.
std::optional<int> number(std::string_view digits) {
    const bool isNumeric = !digits.empty() && std::all_of(digits.begin(), digits.end(), [](char c) {
        return c >= '0' && c <= '9';
    });
    int value = 0;
    if (!isNumeric ||
        std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc()) {
        return std::nullopt;
    }
    return value;
}

std::string_view timePart(std::string_view stamp, std::size_t first) {
    const std::string_view part = mapper::stampPart(stamp, first, 2);
    return part.empty() ? "00" : part;
}

std::optional<Moment> split(std::string_view stamp) {
    const Moment moment{
        mapper::stampPart(stamp, 1, 4),
        mapper::stampPart(stamp, 5, 2),
        mapper::stampPart(stamp, 7, 2),
        timePart(stamp, 10),
        timePart(stamp, 12),
        timePart(stamp, 14),
    };
    const std::optional<int> month = number(moment.month);
    if (!number(moment.year) || !month || !number(moment.day) || moment.year < firstYear ||
        moment.year > lastYear || *month > lastMonth) {
        return std::nullopt;
    }
    return moment;
}

bool isBelow(std::string_view part, int limit) {
    const std::optional<int> value = number(part);
    return value && *value < limit;
}

}  // namespace

std::string convertStamp(std::string_view stamp) {
    const std::optional<Moment> moment = split(stamp);
    if (!moment) {
        return {};
    }
    return html::joined({moment->day, "/", moment->month, "/", moment->year, " ", moment->hour, ":",
                         moment->minute, ":", moment->second});
}

bool isValidStamp(std::string_view stamp) {
    const std::optional<Moment> moment = split(stamp);
    if (!moment) {
        return false;
    }
    const std::chrono::year_month_day date{
        std::chrono::year(*number(moment->year)),
        std::chrono::month(static_cast<unsigned>(*number(moment->month))),
        std::chrono::day(static_cast<unsigned>(*number(moment->day)))};
    return date.ok() && isBelow(moment->hour, 24) && isBelow(moment->minute, 60) &&
           isBelow(moment->second, 60);
}

}  // namespace tandril::forms
