#include "xml/encoding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "platform/ascii.h"
#include "platform/unicode.h"
#include "xml/well_formed.h"

namespace tandril::xml {
namespace {

struct NamedEncoding {
    std::string_view name;  // in lower case
    Encoding encoding;
};

constexpr std::array<NamedEncoding, 13> encodingNames{{
    {"utf-8", Encoding::Utf8},
    {"utf8", Encoding::Utf8},
    {"utf-16", Encoding::Utf16Le},
    {"utf-16le", Encoding::Utf16Le},
    {"utf-16be", Encoding::Utf16Be},
    {"iso-8859-1", Encoding::Latin1},
    {"iso_8859-1", Encoding::Latin1},
    {"iso8859-1", Encoding::Latin1},
    {"latin1", Encoding::Latin1},
    {"windows-1252", Encoding::Windows1252},
    {"cp1252", Encoding::Windows1252},
    {"us-ascii", Encoding::Ascii},
    {"ascii", Encoding::Ascii},
}};

constexpr std::string_view utf16LeMark = "\xFF\xFE";
constexpr std::string_view utf16BeMark = "\xFE\xFF";

// windows-1252 from 0x80 to 0x9F; the five unassigned bytes stand for the control characters of
// the same number.
constexpr std::array<char32_t, 32> windows1252High{
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

std::optional<char32_t> fromByte(unsigned char byte, Encoding encoding) {
    if (byte < 0x80) {
        return byte;
    }
    if (encoding == Encoding::Ascii) {
        return std::nullopt;
    }
    if (encoding == Encoding::Windows1252 && byte < 0xA0) {
        return windows1252High[byte - 0x80U];
    }
    return byte;
}

std::optional<unsigned char> toByte(char32_t character, Encoding encoding) {
    if (character < 0x80) {
        return static_cast<unsigned char>(character);
    }
    if (encoding == Encoding::Ascii) {
        return std::nullopt;
    }
    if (encoding == Encoding::Windows1252) {
        const auto* found = std::find(windows1252High.begin(), windows1252High.end(), character);
        if (found != windows1252High.end()) {
            return static_cast<unsigned char>(0x80 + (found - windows1252High.begin()));
        }
        if (character < 0xA0) {
            return std::nullopt;
        }
    }
    return character <= 0xFF ? std::optional(static_cast<unsigned char>(character)) : std::nullopt;
}

std::optional<std::string> decodeSingleByte(std::string_view bytes, Encoding encoding) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const auto character = fromByte(static_cast<unsigned char>(byte), encoding);
        if (!character) {
            return std::nullopt;
        }
        platform::appendUtf8(text, *character);
    }
    return text;
}

platform::ByteOrder orderOf(Encoding wide) {
    return wide == Encoding::Utf16Le ? platform::ByteOrder::LittleEndian
                                     : platform::ByteOrder::BigEndian;
}

std::optional<std::string> decodeUtf16(std::string_view bytes, Encoding encoding) {
    platform::DecodedText decoded = platform::utf8FromUtf16(bytes, orderOf(encoding));
    return decoded.complete ? std::optional(std::move(decoded.text)) : std::nullopt;
}

std::string encodeUtf16(std::string_view text, Encoding encoding) {
    return std::string(encoding == Encoding::Utf16Le ? utf16LeMark : utf16BeMark) +
           platform::utf16FromUtf8(text, orderOf(encoding));
}

// Writes single bytes and watches where CDATA sections begin and end, since a reference means
// nothing inside of one.
class SingleByteEncoder {
  public:
    explicit SingleByteEncoder(Encoding encoding) : encoding_(encoding) {}

    std::string encode(std::string_view text) {
        bytes_.reserve(text.size());
        std::size_t position = 0;
        while (position < text.size()) {
            watch(text.substr(position));
            const platform::DecodedCharacter decoded = platform::decodeUtf8(text.substr(position));
            append(decoded.length == 0 ? 0xFFFD : decoded.character);
            position += std::max<std::size_t>(decoded.length, 1);
        }
        return std::move(bytes_);
    }

  private:
    static constexpr std::string_view opening = "<![CDATA[";
    static constexpr std::string_view closing = "]]>";

    void watch(std::string_view rest) {
        if (inComment_) {
            inComment_ = rest.substr(0, 3) != "-->";
        } else if (inSection_) {
            inSection_ = rest.substr(0, closing.size()) != closing;
        } else if (rest.front() == '<') {
            inSection_ = rest.substr(0, opening.size()) == opening;
            inComment_ = rest.substr(0, 4) == "<!--";
        }
    }

    void append(char32_t character) {
        if (const auto byte = toByte(character, encoding_)) {
            bytes_ += static_cast<char>(*byte);
            return;
        }
        if (inSection_) {
            bytes_ += closing;
        }
        bytes_ += "&#" + std::to_string(static_cast<unsigned long>(character)) + ";";
        if (inSection_) {
            bytes_ += opening;
        }
    }

    Encoding encoding_;
    std::string bytes_;
    bool inSection_ = false;
    bool inComment_ = false;
};

std::optional<DecodedText> decoded(std::optional<std::string> text, Encoding encoding, bool mark) {
    if (!text) {
        return std::nullopt;
    }
    return DecodedText{std::move(*text), encoding, mark};
}

bool startsWith(std::string_view bytes, std::string_view prefix) {
    return bytes.substr(0, prefix.size()) == prefix;
}

// Whether bytes without a mark begin like "<" in one of the forms of UTF-16.
std::optional<Encoding> wideWithoutMark(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (startsWith(bytes, "<\0"sv)) {
        return Encoding::Utf16Le;
    }
    if (startsWith(bytes, "\0<"sv)) {
        return Encoding::Utf16Be;
    }
    return std::nullopt;
}

}  // namespace

bool isWide(Encoding encoding) {
    return encoding == Encoding::Utf16Le || encoding == Encoding::Utf16Be;
}

std::optional<Encoding> encodingNamed(std::string_view name) {
    const std::string lower = platform::foldAscii(name);
    const auto* found = std::find_if(encodingNames.begin(), encodingNames.end(),
                                     [&](const NamedEncoding& n) { return n.name == lower; });
    return found == encodingNames.end() ? std::nullopt : std::optional(found->encoding);
}

std::optional<DecodedText> decodeDocument(std::string bytes) {
    if (startsWith(bytes, utf8Mark)) {
        bytes.erase(0, utf8Mark.size());
        return DecodedText{std::move(bytes), Encoding::Utf8, true};
    }
    for (const auto& [mark, encoding] :
         {std::pair(utf16LeMark, Encoding::Utf16Le), std::pair(utf16BeMark, Encoding::Utf16Be)}) {
        if (startsWith(bytes, mark)) {
            return decoded(decodeUtf16(std::string_view(bytes).substr(2), encoding), encoding,
                           true);
        }
    }
    if (const auto wide = wideWithoutMark(bytes)) {
        return decoded(decodeUtf16(bytes, *wide), *wide, false);
    }
    const auto declaration = readDeclaration(bytes);
    if (!declaration || declaration->encoding.empty()) {
        return DecodedText{std::move(bytes), Encoding::Utf8, false};
    }
    const auto named = encodingNamed(declaration->encoding);
    if (!named || isWide(*named)) {
        return std::nullopt;
    }
    if (*named == Encoding::Utf8) {
        return DecodedText{std::move(bytes), Encoding::Utf8, false};
    }
    return decoded(decodeSingleByte(bytes, *named), *named, false);
}

std::string encodeDocument(std::string text, Encoding encoding, bool withMark) {
    if (encoding == Encoding::Utf8) {
        return withMark ? std::string(utf8Mark) + text : std::move(text);
    }
    return isWide(encoding) ? encodeUtf16(text, encoding)
                            : SingleByteEncoder(encoding).encode(text);
}

std::optional<std::string> encodedAsDeclared(std::string_view text) {
    const auto declaration = readDeclaration(text);
    if (!declaration || declaration->encoding.empty()) {
        return std::nullopt;
    }
    const auto named = encodingNamed(declaration->encoding);
    if (!named) {
        const auto place = static_cast<std::size_t>(declaration->encoding.data() - text.data());
        return std::string(text).replace(place, declaration->encoding.size(), "UTF-8");
    }
    if (*named == Encoding::Utf8) {
        return std::nullopt;
    }
    return encodeDocument(std::string(text), *named, false);
}

}  // namespace tandril::xml
