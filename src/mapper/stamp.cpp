#include "mapper/stamp.h"

namespace tandril::mapper {
namespace {

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The byte offset behind `count` characters from `offset`.
std::size_t skip(std::string_view text, std::size_t offset, std::size_t count) {
    while (count > 0 && offset < text.size()) {
        ++offset;
        while (offset < text.size() && isContinuation(text[offset])) {
            ++offset;
        }
        --count;
    }
    return offset;
}

}  // namespace

std::string_view stampPart(std::string_view stamp, std::size_t first, std::size_t count) {
    const std::size_t begin = skip(stamp, 0, first - 1);
    return stamp.substr(begin, skip(stamp, begin, count) - begin);
}

std::string monthDayYear(std::string_view stamp) {
    std::string text(stampPart(stamp, 5, 2));
    text += '/';
    text += stampPart(stamp, 7, 2);
    text += '/';
    text += stampPart(stamp, 1, 4);
    return text;
}

std::string_view hourMinute(std::string_view stamp) {
    return stampPart(stamp, 10, 4);
}

}  // namespace tandril::mapper
