#include "platform/real_path.h"

#include <windows.h>

#include <string>
#include <string_view>

#include "platform/windows/handle.h"

namespace tandril::platform {
namespace {

// Without the mark of a path that is taken to the letter, which not every function knows.
std::wstring withoutMark(std::wstring_view path) {
    constexpr std::wstring_view share = L"\\\\?\\UNC\\";
    constexpr std::wstring_view literalMark = L"\\\\?\\";
    if (path.starts_with(share)) return L"\\\\" + std::wstring(path.substr(share.size()));
    if (path.starts_with(literalMark)) path.remove_prefix(literalMark.size());
    return std::wstring(path);
}

}  // namespace

std::optional<std::filesystem::path> realPath(const std::filesystem::path& path) {
    // The flag is what lets a folder be opened.
    const Handle opened(::CreateFileW(path.wstring().c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!opened.valid()) return std::nullopt;
    std::wstring real(MAX_PATH, L'\0');
    for (;;) {
        const auto room = static_cast<DWORD>(real.size());
        const DWORD length = ::GetFinalPathNameByHandleW(opened.get(), real.data(), room, 0);
        if (length == 0) return std::nullopt;
        real.resize(length);
        if (length < room) return withoutMark(real);
    }
}

}  // namespace tandril::platform
