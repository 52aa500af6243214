#include "enterprise/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tandril::enterprise {

std::optional<double> parseNumber(std::string_view text) {
    std::string digits(text);
    std::ranges::replace(digits, ',', '.');
    double number = 0;
    const char* end = digits.data() + digits.size();
    const auto parsed = std::from_chars(digits.data(), end, number, std::chars_format::fixed);
    if (parsed.ec != std::errc() || parsed.ptr != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

std::string formatNumber(double number) {
    std::string text = std::to_string(std::round(number * 100) / 100);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

}  // namespace tandril::enterprise
