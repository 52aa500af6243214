#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

namespace tandril::platform {

// The decimal number that the text begins with, which is what a numeric registry value takes from
// a text: 0 when there is none, the largest number when it does not fit.
constexpr std::uint32_t leadingNumber(std::string_view text) {
    constexpr std::uint64_t largestNumber = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') break;
        number = number * 10 + static_cast<std::uint64_t>(c - '0');
        if (number > largestNumber) return static_cast<std::uint32_t>(largestNumber);
    }
    return static_cast<std::uint32_t>(number);
}

}  // namespace tandril::platform
