#include "platform/program_folder.h"

#include <windows.h>

#include <string>

namespace tandril::platform {

std::filesystem::path programFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const auto room = static_cast<DWORD>(path.size());
        const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), room);
        if (length < room) {
            path.resize(length);
            return std::filesystem::path(path).parent_path();
        }
        path.resize(2 * path.size());
    }
}

}  // namespace tandril::platform
