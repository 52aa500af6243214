#include "platform/home/host_file.h"

#include <windows.h>

#include "platform/windows/wide.h"
#include "platform/windows/windows_file.h"

namespace tandril::platform {

bool isHostFileMissing(const std::string& path) {
    if (::GetFileAttributesW(toWide(path).c_str()) != INVALID_FILE_ATTRIBUTES) return false;
    const DWORD error = ::GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

std::string readHostFile(const std::string& path) {
    return readFile(toWide(path), path);
}

void replaceHostFile(const std::string& path, std::string_view bytes, Durability durability) {
    replaceFile(toWide(path), path, bytes, durability);
}

}  // namespace tandril::platform
