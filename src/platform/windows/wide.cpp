#include "platform/windows/wide.h"

#include <windows.h>

#include <limits>

#include "platform/fault.h"

namespace tandril::platform {
namespace {

// The conversions of Windows count in int.
int checkedSize(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw Fault("a text is too long to be converted");
    }
    return static_cast<int>(size);
}

}  // namespace

std::wstring toWide(std::string_view utf8) {
    if (utf8.empty()) return {};
    const int size = checkedSize(utf8.size());
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), length);
    return wide;
}

std::string toUtf8(std::wstring_view wide) {
    if (wide.empty()) return {};
    const int size = checkedSize(wide.size());
    const int length =
        ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(), length, nullptr, nullptr);
    return utf8;
}

}  // namespace tandril::platform
