#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tandril::xml {

// The encodings that documents are read and written in.
enum class Encoding { Utf8, Utf16Le, Utf16Be, Latin1, Windows1252, Ascii };

// The mark in front of a text in UTF-8, which no text needs.
inline constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

// Whether that is UTF-16, of whichever byte order.
bool isWide(Encoding encoding);

// The encoding that a declaration's name stands for, in any case; nothing for an unknown name.
// "UTF-16" is little-endian, since that is what is written.
std::optional<Encoding> encodingNamed(std::string_view name);

// A document's text as it was decoded from bytes.
struct DecodedText {
    std::string text;  // UTF-8, without a byte-order mark
    Encoding encoding = Encoding::Utf8;
    bool hadMark = false;  // whether a byte-order mark stood before it
};

// Decodes the bytes of a document: by its byte-order mark, else as UTF-16 when it begins like that,
// else by the name in its declaration, else as UTF-8. Returns nothing when the name is unknown or
// the bytes are not of the encoding. The UTF-8 case does not copy and leaves its check to the
// well-formedness check.
std::optional<DecodedText> decodeDocument(std::string bytes);

// Encodes the text of a document, with a byte-order mark for UTF-16 or when `withMark` is set. A
// character that the encoding lacks becomes a character reference, which ends and reopens a CDATA
// section around it.
std::string encodeDocument(std::string text, Encoding encoding, bool withMark);

// Bytes for a document that came as a text and is stored as it is: in the encoding that its
// declaration names; an unknown name in it is corrected to "UTF-8". Nothing when these are the
// text's own bytes, as they are without a declaration.
std::optional<std::string> encodedAsDeclared(std::string_view text);

}  // namespace tandril::xml
