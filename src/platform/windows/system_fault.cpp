#include "platform/windows/system_fault.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <memory>
#include <system_error>

#include "platform/fault.h"
#include "platform/windows/wide.h"

namespace tandril::platform {
namespace {

struct CommonCause {
    DWORD error;
    int generic;
};

constexpr CommonCause commonCauses[] = {
    {ERROR_FILE_NOT_FOUND, ENOENT},    {ERROR_PATH_NOT_FOUND, ENOENT},
    {ERROR_ACCESS_DENIED, EACCES},     {ERROR_ALREADY_EXISTS, EEXIST},
    {ERROR_FILE_EXISTS, EEXIST},       {ERROR_DISK_FULL, ENOSPC},
    {directoryNotSupported, EISDIR},   {ERROR_INVALID_NAME, EINVAL},
    {ERROR_INVALID_PARAMETER, EINVAL}, {ERROR_NOT_SAME_DEVICE, EXDEV},
};

struct FreeLocal {
    void operator()(wchar_t* text) const { ::LocalFree(text); }
};

std::string textOfWindows(DWORD error) {
    wchar_t* allocated = nullptr;
    const DWORD length = ::FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, error, 0, reinterpret_cast<wchar_t*>(&allocated), 0, nullptr);
    const std::unique_ptr<wchar_t, FreeLocal> owner(allocated);
    std::wstring_view text(allocated, length);
    text = text.substr(0, text.find_last_not_of(L" \r\n") + 1);
    return text.empty() ? "error " + std::to_string(error) : toUtf8(text);
}

}  // namespace

std::string systemErrorText(DWORD error) {
    const auto* cause = std::find_if(std::begin(commonCauses), std::end(commonCauses),
                                     [=](const CommonCause& row) { return row.error == error; });
    return cause != std::end(commonCauses) ? std::generic_category().message(cause->generic)
                                           : textOfWindows(error);
}

void throwSystemFault(std::string_view what, std::string_view shown, DWORD error) {
    throw Fault("cannot " + std::string(what) + " \"" + std::string(shown) +
                "\": " + systemErrorText(error));
}

}  // namespace tandril::platform
