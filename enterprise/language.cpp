#include "enterprise/language.h"

#include <array>
#include <cctype>
#include <string>

namespace tandril::enterprise {
namespace {

struct Name {
    Language language;
    std::string_view name;
};

constexpr std::array<Name, 3> names{
    {{Language::English, "en"}, {Language::German, "de"}, {Language::Dutch, "nl"}}};

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

// The weight of "de;q=0.8" in thousandths; 1000 without a weight, 0 for one that is none.
int weight(std::string_view parameters) {
    const auto at = parameters.find("q=");
    if (at == std::string_view::npos) return 1000;
    std::string digits;
    for (const char c : parameters.substr(at + 2)) {
        if (c != '.' && std::isdigit(static_cast<unsigned char>(c)) == 0) break;
        if (c != '.') digits += c;
    }
    digits.resize(4, '0');
    int value = 0;
    for (const char c : digits) value = value * 10 + (c - '0');
    return value;
}

}  // namespace

std::string_view languageName(Language language) {
    for (const Name& entry : names) {
        if (entry.language == language) return entry.name;
    }
    return "en";
}

std::optional<Language> languageOfTag(std::string_view tag) {
    std::string primary;
    for (const char c : trimmed(tag).substr(0, trimmed(tag).find('-'))) {
        primary += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    for (const Name& entry : names) {
        if (entry.name == primary) return entry.language;
    }
    return std::nullopt;
}

std::optional<Language> preferredLanguage(std::string_view acceptLanguage) {
    std::optional<Language> best;
    int bestWeight = 0;
    while (!acceptLanguage.empty()) {
        const auto comma = acceptLanguage.find(',');
        const std::string_view entry = acceptLanguage.substr(0, comma);
        acceptLanguage = comma == std::string_view::npos ? "" : acceptLanguage.substr(comma + 1);
        const auto semicolon = entry.find(';');
        const auto language = languageOfTag(entry.substr(0, semicolon));
        const int own =
            semicolon == std::string_view::npos ? 1000 : weight(entry.substr(semicolon));
        if (language && own > bestWeight) {
            best = language;
            bestWeight = own;
        }
    }
    return best;
}

}  // namespace tandril::enterprise
