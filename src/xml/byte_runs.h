#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Lengths of runs of ordinary bytes, found eight bytes at a time. Almost all of a document is in
// such runs, and most of them are so short that the loops and branches of a look at each byte would
// take longer than everything else.
namespace tandril::xml {

namespace eight_bytes {

inline constexpr std::uint64_t ones = 0x0101010101010101;
inline constexpr std::uint64_t highBits = 0x8080808080808080;

// A mask has the high bit of each byte set that it speaks of; the bytes behind the first such one
// may be marked as well.
constexpr std::uint64_t equal(std::uint64_t bytes, char to) {
    const std::uint64_t difference = bytes ^ (ones * static_cast<unsigned char>(to));
    return (difference - ones) & ~difference & highBits;
}
constexpr std::uint64_t control(std::uint64_t bytes) {
    return (bytes - ones * 0x20) & ~bytes & highBits;
}
// Exact for each byte.
constexpr std::uint64_t letters(std::uint64_t bytes) {
    const std::uint64_t lower = (bytes | ones * 0x20) & ~highBits;
    return (lower + ones * (0x80 - 'a')) & ~(lower + ones * (0x7F - 'z')) & ~bytes & highBits;
}

// The number of bytes before the first marked one.
constexpr std::size_t before(std::uint64_t mask) {
    const int bits = std::endian::native == std::endian::little ? std::countr_zero(mask)
                                                                : std::countl_zero(mask);
    return static_cast<std::size_t>(bits) / 8;
}

}  // namespace eight_bytes

// How many bytes stand before the first one that `marked` marks, at least: less than eight bytes
// at the end of the text are not looked at.
template <class Marked>
std::size_t runLength(std::string_view text, const Marked& marked) {
    std::size_t length = 0;
    while (text.size() - length >= sizeof(std::uint64_t)) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + length, sizeof bytes);
        if (const std::uint64_t mask = marked(bytes)) {
            return length + eight_bytes::before(mask);
        }
        length += sizeof bytes;
    }
    return length;
}

// A run of ASCII that means nothing in text: no markup, reference, or control character.
inline std::size_t plainTextLength(std::string_view text) {
    return runLength(text, [](std::uint64_t bytes) {
        using eight_bytes::control;
        using eight_bytes::equal;
        return equal(bytes, '<') | equal(bytes, '&') | equal(bytes, ']') | control(bytes) |
               (bytes & eight_bytes::highBits);
    });
}

// A run of ASCII that means nothing in an attribute value between such quotes.
inline std::size_t plainValueLength(std::string_view text, char quote) {
    return runLength(text, [quote](std::uint64_t bytes) {
        using eight_bytes::control;
        using eight_bytes::equal;
        return equal(bytes, quote) | equal(bytes, '<') | equal(bytes, '&') | control(bytes) |
               (bytes & eight_bytes::highBits);
    });
}

// A run of bytes that are written as they are, in texts and in attribute values.
inline std::size_t verbatimLength(std::string_view text) {
    return runLength(text, [](std::uint64_t bytes) {
        using eight_bytes::control;
        using eight_bytes::equal;
        return equal(bytes, '&') | equal(bytes, '<') | equal(bytes, '>') | equal(bytes, '"') |
               control(bytes);
    });
}

// A run of the letters A to Z in either case, which most names are made of.
inline std::size_t lettersLength(std::string_view text) {
    return runLength(text, [](std::uint64_t bytes) {
        return ~eight_bytes::letters(bytes) & eight_bytes::highBits;
    });
}

}  // namespace tandril::xml
