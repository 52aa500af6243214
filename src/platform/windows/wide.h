#pragma once

#include <string>
#include <string_view>

// Text inside is UTF-8, and UTF-16 to Windows.
namespace tandril::platform {

// Bytes that are not UTF-8 become U+FFFD.
std::wstring toWide(std::string_view utf8);

// Surrogates that stand alone become U+FFFD.
std::string toUtf8(std::wstring_view wide);

}  // namespace tandril::platform
