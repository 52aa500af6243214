#include "platform/windows/unix_path.h"

#include <windows.h>

#include <memory>

#include "platform/windows/wide.h"

namespace tandril::platform {
namespace {

struct FreeOnHeap {
    void operator()(char* text) const { ::HeapFree(::GetProcessHeap(), 0, text); }
};

}  // namespace

std::optional<std::string> unixPath(const std::string& path) {
    using UnixName = char*(CDECL*)(const wchar_t*);
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (unixName == nullptr) return std::nullopt;
    const std::unique_ptr<char, FreeOnHeap> name(unixName(toWide(path).c_str()));
    if (!name) return std::nullopt;
    return name.get();
}

}  // namespace tandril::platform
