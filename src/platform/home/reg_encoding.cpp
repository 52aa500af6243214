#include "platform/home/reg_encoding.h"

#include <cstddef>

namespace tandril::platform {
namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16Mark = "\xFF\xFE";

DecodedText wellFormedPart(std::string_view bytes) {
    std::size_t end = 0;
    while (end < bytes.size()) {
        const std::size_t length = decodeUtf8(bytes.substr(end)).length;
        if (length == 0) return {std::string(bytes.substr(0, end)), false};
        end += length;
    }
    return {std::string(bytes), true};
}

}  // namespace

RegEncoding detectEncoding(std::string_view bytes) {
    if (bytes.starts_with(utf16Mark)) return RegEncoding::Utf16Le;
    return bytes.starts_with(utf8Mark) ? RegEncoding::Utf8WithMark : RegEncoding::Utf8;
}

DecodedText decodeText(std::string_view bytes, RegEncoding encoding) {
    if (encoding == RegEncoding::Utf16Le) {
        return utf8FromUtf16(bytes.substr(utf16Mark.size()), ByteOrder::LittleEndian);
    }
    if (encoding == RegEncoding::Utf8WithMark) bytes.remove_prefix(utf8Mark.size());
    return wellFormedPart(bytes);
}

std::string encodeText(std::string_view text, RegEncoding encoding) {
    if (encoding == RegEncoding::Utf16Le) {
        return std::string(utf16Mark) + utf16FromUtf8(text, ByteOrder::LittleEndian);
    }
    const bool mark = encoding == RegEncoding::Utf8WithMark;
    return std::string(mark ? utf8Mark : "").append(text);
}

}  // namespace tandril::platform
