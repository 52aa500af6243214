// save_registry.exe MACHINE USER: saves HKEY_LOCAL_MACHINE\Software and HKEY_CURRENT_USER\Software
// into these files, which may not exist yet. Wine's are texts.
//
// One request for each: on a busy machine an export, which asks for every value by itself, takes
// minutes.
#include <windows.h>

#include <cstdio>
#include <initializer_list>
#include <utility>

namespace {

bool mayBackUp() {
    HANDLE token = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, &token)) return false;
    TOKEN_PRIVILEGES privileges{1, {{{}, SE_PRIVILEGE_ENABLED}}};
    const bool isGiven =
        ::LookupPrivilegeValueW(nullptr, SE_BACKUP_NAME, &privileges.Privileges[0].Luid) &&
        ::AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr) &&
        ::GetLastError() == ERROR_SUCCESS;
    ::CloseHandle(token);
    return isGiven;
}

LSTATUS save(HKEY root, const wchar_t* file) {
    HKEY software = nullptr;
    if (const LSTATUS error = ::RegOpenKeyExW(root, L"Software", 0, KEY_READ, &software)) {
        return error;
    }
    const LSTATUS error = ::RegSaveKeyW(software, file, nullptr);
    ::RegCloseKey(software);
    return error;
}

}  // namespace

int wmain(int count, wchar_t** words) {
    if (count != 3 || !mayBackUp()) return 2;
    for (const auto& [root, file] :
         {std::pair{HKEY_LOCAL_MACHINE, words[1]}, std::pair{HKEY_CURRENT_USER, words[2]}}) {
        if (const LSTATUS error = save(root, file)) {
            std::fprintf(stderr, "cannot save %ls: error %ld\n", file, error);
            return 1;
        }
    }
    return 0;
}
