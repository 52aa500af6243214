#pragma once

#include <optional>
#include <string_view>

namespace tandril::enterprise {

// The languages that the server has texts for.
enum class Language { English, German, Dutch };

// The two-letter name of the language: "en", "de", "nl".
std::string_view languageName(Language language);

// The language of a tag such as "de" or "de-AT", in any case.
std::optional<Language> languageOfTag(std::string_view tag);

// The language that a client wants most among ours, by the value of its Accept-Language header.
std::optional<Language> preferredLanguage(std::string_view acceptLanguage);

}  // namespace tandril::enterprise
