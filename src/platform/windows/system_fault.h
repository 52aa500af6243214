#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace tandril::platform {

// The error of an operation for files that met a folder. Not in every version of winerror.h.
inline constexpr DWORD directoryNotSupported = 336;

// What the error code of a Windows function means. Causes that every system knows read as they do
// elsewhere, in English; any other reads as Windows says it.
std::string systemErrorText(DWORD error);

// Throws the Fault for a failed system call: 'cannot WHAT "SHOWN": cause of `error`'.
[[noreturn]] void throwSystemFault(std::string_view what, std::string_view shown, DWORD error);

}  // namespace tandril::platform
