#include <cstdint>
#include <cstdio>

#include "platform/home/reg_document.h"

namespace tandril::platform {

std::string serializeRegDocument(const RegDocument& document) {
    std::string text;
    for (const RegSection& section : document.sections) {
        for (const RegLine& line : section.lines) {
            text.append(line.head).append(line.data).append(line.tail);
        }
    }
    return encodeText(text, document.encoding);
}

std::string quoteReg(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '\\' || c == '"') quoted += '\\';
        quoted += c;
    }
    return quoted += '"';
}

std::string formatRegNumber(std::uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "dword:%08x", number);
    return text;
}

std::string formatRegHexText(std::string_view prefix, std::string_view text, std::size_t column,
                             std::string_view lineEnd) {
    constexpr std::size_t lastColumn = 76;
    std::string bytes = utf16FromUtf8(text, ByteOrder::LittleEndian);
    bytes.append(2, '\0');

    std::string out(prefix);
    column += prefix.size();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(bytes[i]));
        out += digits;
        if (i + 1 == bytes.size()) break;
        out += ',';
        column += 3;
        if (column > lastColumn) {
            out.append("\\").append(lineEnd).append("  ");
            column = 2;
        }
    }
    return out;
}

}  // namespace tandril::platform
