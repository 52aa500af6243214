#include <algorithm>
#include <optional>

#include "xml/characters.h"
#include "xml/cursor.h"
#include "xml/well_formed.h"

namespace tandril::xml {
namespace {

constexpr std::string_view opening = "<?xml";

void requireVersion(const Cursor& cursor, std::string_view version) {
    if (version.size() < 3 || !version.starts_with("1.") ||
        !std::all_of(version.begin() + 2, version.end(), isDigit)) {
        cursor.fail("the version is not supported");
    }
}

void requireEncodingName(const Cursor& cursor, std::string_view name) {
    const auto isNamePart = [](char c) {
        return isLetter(c) || isDigit(c) || c == '.' || c == '_' || c == '-';
    };
    if (!isLetter(name.front()) || !std::all_of(name.begin(), name.end(), isNamePart)) {
        cursor.fail("the encoding has no proper name");
    }
}

// One of version, encoding and standalone; nothing when it is not there.
std::optional<std::string_view> value(Cursor& cursor, std::string_view name) {
    const std::size_t start = cursor.position();
    const bool isSeparated = cursor.skipBlanks();
    if (!cursor.startsWith(name)) {
        cursor.moveTo(start);
        return std::nullopt;
    }
    if (!isSeparated) {
        cursor.fail("a blank is missing in the declaration");
    }
    cursor.advance(name.size());
    cursor.skipBlanks();
    cursor.require("=", "an equals sign is missing in the declaration");
    cursor.skipBlanks();
    const std::string_view found = cursor.quoted();
    if (found.empty()) {
        cursor.fail("a value in the declaration is empty");
    }
    return found;
}

}  // namespace

Declaration scanDeclaration(Cursor& cursor) {
    Declaration found;
    const std::size_t start = cursor.position();
    if (!cursor.startsWith(opening)) {
        return found;
    }
    cursor.advance(opening.size());
    if (cursor.atEnd() || !isBlank(cursor.current())) {
        cursor.moveTo(start);
        return found;
    }
    const auto version = value(cursor, "version");
    if (!version) {
        cursor.fail("the declaration has no version");
    }
    found.present = true;
    found.version = *version;
    requireVersion(cursor, found.version);
    if (const auto encoding = value(cursor, "encoding")) {
        found.encoding = *encoding;
        requireEncodingName(cursor, found.encoding);
    }
    found.standalone = value(cursor, "standalone").value_or("");
    if (!found.standalone.empty() && found.standalone != "yes" && found.standalone != "no") {
        cursor.fail("standalone is neither yes nor no");
    }
    cursor.skipBlanks();
    cursor.require("?>", "the declaration is not closed");
    found.end = cursor.position();
    return found;
}

std::optional<Declaration> readDeclaration(std::string_view text) {
    Cursor cursor(text);
    try {
        const Declaration found = scanDeclaration(cursor);
        return found.present ? std::optional(found) : std::nullopt;
    } catch (const Stop&) {
        return std::nullopt;
    }
}

}  // namespace tandril::xml
