#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

#include "platform/ascii.h"
#include "platform/fault.h"
#include "platform/home/reg_document.h"

namespace tandril::platform {
namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view blanksAndLineEnd = " \t\r\n";

bool isHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Bytes of "43,00,\<line end>  3a,00"; nothing when that is not what stands there.
std::optional<std::string> hexBytes(std::string_view list) {
    std::string bytes;
    std::string digits;
    for (const char c : list) {
        if (blanksAndLineEnd.find(c) != std::string_view::npos || c == '\\') continue;
        if (c == ',') {
            if (digits.size() != 2) return std::nullopt;
            digits.clear();
            continue;
        }
        if (!isHexDigit(c) || digits.size() == 2) return std::nullopt;
        digits += c;
        if (digits.size() < 2) continue;
        unsigned byte = 0;
        std::from_chars(digits.data(), digits.data() + 2, byte, 16);
        bytes += static_cast<char>(byte);
    }
    if (digits.size() == 1) return std::nullopt;
    return bytes;
}

class Parser {
  public:
    explicit Parser(std::string_view text) : text_(text) {}

    std::vector<RegSection> parse(std::string& lineEnd) {
        parseHeader(lineEnd);
        while (position_ < text_.size()) parseLine();
        return std::move(sections_);
    }

  private:
    [[noreturn]] void fail(const std::string& reason) const {
        const auto line =
            1 + std::count(text_.begin(), text_.begin() + static_cast<long>(start_), '\n');
        throw Fault("line " + std::to_string(line) + ": " + reason);
    }

    // From `from` to the next line, its line end included.
    std::string_view restOfLine(std::size_t from) const {
        const std::size_t end = text_.find('\n', from);
        return end == std::string_view::npos ? text_.substr(from)
                                             : text_.substr(from, end + 1 - from);
    }

    std::size_t skipBlanks(std::size_t from) const {
        return std::min(text_.find_first_not_of(blanks, from), text_.size());
    }

    char at(std::size_t index) const { return index < text_.size() ? text_[index] : '\0'; }

    RegLine& add(std::size_t end) {
        RegLine line;
        line.head = text_.substr(position_, end - position_);
        position_ = end;
        return sections_.back().lines.emplace_back(std::move(line));
    }

    void parseHeader(std::string& lineEnd) {
        const std::string_view line = restOfLine(0);
        const std::string_view tail = line.substr(std::min(regHeader.size(), line.size()));
        if (!line.starts_with(regHeader) ||
            tail.find_first_not_of(blanksAndLineEnd) != std::string_view::npos) {
            fail("the file does not begin with \"" + std::string(regHeader) + "\"");
        }
        if (tail.ends_with('\n') && !tail.ends_with("\r\n")) lineEnd = "\n";
        sections_.emplace_back();
        add(line.size());
    }

    void parseLine() {
        start_ = position_;
        const std::size_t first = skipBlanks(position_);
        switch (at(first)) {
            case '[':
                return parseKey(first);
            case '"':
            case '@':
                return parseValue(first);
            default:
                // Blank, a comment, or what the editor ignores.
                add(position_ + restOfLine(position_).size());
        }
    }

    // A key's name may hold brackets, so that the last one of the line closes it.
    void parseKey(std::size_t first) {
        const std::string_view line = restOfLine(first);
        const std::size_t close = line.rfind(']');
        if (close == std::string_view::npos) fail("the key's closing bracket is missing");
        std::string_view key = line.substr(1, close - 1);
        if (key.starts_with('-')) key = {};  // asks to delete a key, and is none itself
        while (key.ends_with('\\')) key.remove_suffix(1);
        RegSection section;
        section.key = key;
        section.folded = foldAscii(key);
        sections_.push_back(std::move(section));
        add(first + line.size());
    }

    // Text in quotation marks from `from` on, line breaks included; returns the place behind it.
    std::size_t parseQuoted(std::size_t from, std::string& out) const {
        for (std::size_t i = from + 1; i < text_.size(); ++i) {
            if (text_[i] == '"') return i + 1;
            const bool escape = text_[i] == '\\' && (at(i + 1) == '\\' || at(i + 1) == '"');
            out += text_[escape ? ++i : i];
        }
        fail("the closing quotation mark is missing");
    }

    void parseValue(std::size_t first) {
        std::string name;
        std::size_t place = text_[first] == '@' ? first + 1 : parseQuoted(first, name);
        place = skipBlanks(place);
        if (at(place) != '=') fail("\"=\" is missing behind the value's name");
        place = skipBlanks(place + 1);

        RegLine& line = add(place);
        line.name = std::move(name);
        const std::string start = foldAscii(restOfLine(place).substr(0, 6));
        if (start.starts_with('"')) {
            parseText(line);
        } else if (start == "dword:") {
            parseNumber(line);
        } else if (start.starts_with("hex:") || start.starts_with("hex(")) {
            parseHex(line);
        } else {
            parseOther(line);
        }
    }

    void finish(RegLine& line, RegType type, std::size_t end) {
        line.type = type;
        line.data = text_.substr(position_, end - position_);
        line.tail = restOfLine(end);
        position_ = end + line.tail.size();
    }

    void requireEnd(const RegLine& line) const {
        const std::size_t first = line.tail.find_first_not_of(blanksAndLineEnd);
        if (first != std::string::npos && line.tail[first] != ';') {
            fail("unexpected text behind the value's data");
        }
    }

    void parseText(RegLine& line) {
        finish(line, RegType::Text, parseQuoted(position_, line.value));
        requireEnd(line);
    }

    void parseNumber(RegLine& line) {
        const std::size_t first = skipBlanks(position_ + 6);
        std::size_t end = first;
        while (isHexDigit(at(end))) ++end;
        if (end == first || end - first > 8) fail("a number has one to eight hexadecimal digits");
        std::uint32_t number = 0;
        std::from_chars(text_.data() + first, text_.data() + end, number, 16);
        line.value = std::to_string(number);
        finish(line, RegType::Number, end);
        requireEnd(line);
    }

    // Data that goes on in the next line as long as a line ends in a backslash.
    void parseHex(RegLine& line) {
        std::size_t end = position_;
        for (;;) {
            const std::string_view rest = restOfLine(end);
            const std::size_t last = rest.find_last_not_of(blanksAndLineEnd);
            const bool more = last != std::string_view::npos && rest[last] == '\\';
            if (!more) {
                end += last == std::string_view::npos ? 0 : last + 1;
                break;
            }
            end += rest.size();
            if (end == text_.size()) fail("the value's data breaks off");
        }
        finish(line, RegType::Other, end);
        interpretHex(line);
    }

    static void interpretHex(RegLine& line) {
        const std::string prefix = foldAscii(line.data.substr(0, 7));
        if (prefix != "hex(1):" && prefix != "hex(2):") return;
        const auto bytes = hexBytes(std::string_view(line.data).substr(prefix.size()));
        if (!bytes) return;
        DecodedText decoded = utf8FromUtf16(*bytes, ByteOrder::LittleEndian);
        if (!decoded.complete) return;
        while (decoded.text.ends_with('\0')) decoded.text.pop_back();
        line.value = std::move(decoded.text);
        line.type = RegType::HexText;
    }

    void parseOther(RegLine& line) {
        const std::string_view rest = restOfLine(position_);
        const std::size_t last = rest.find_last_not_of(blanksAndLineEnd);
        if (last == std::string_view::npos) fail("the value's data is missing");
        // A lone minus asks to delete a value, and is none itself.
        const RegType type = rest.substr(0, last + 1) == "-" ? RegType::None : RegType::Other;
        finish(line, type, position_ + last + 1);
    }

    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t start_ = 0;  // where the line or value that is being parsed begins
    std::vector<RegSection> sections_;
};

}  // namespace

RegDocument parseRegDocument(std::string_view bytes) {
    RegDocument document;
    document.encoding = detectEncoding(bytes);
    const DecodedText decoded = decodeText(bytes, document.encoding);
    if (!decoded.complete) {
        const auto line = 1 + std::count(decoded.text.begin(), decoded.text.end(), '\n');
        const char* name = document.encoding == RegEncoding::Utf16Le ? "UTF-16" : "UTF-8";
        throw Fault("line " + std::to_string(line) + ": the text is not " + name);
    }
    document.sections = Parser(decoded.text).parse(document.lineEnd);
    return document;
}

}  // namespace tandril::platform
