#include "platform/windows/windows_shell.h"

#include <windows.h>
// Needs the types of windows.h.
#include <shellapi.h>

#include "platform/system_path.h"
#include "platform/windows/wide.h"

namespace tandril::platform {
namespace {

// Not in every version of winerror.h.
constexpr DWORD elevationRequired = 740;

// Returns 0, or the error.
DWORD createProcess(const std::wstring& program, const std::wstring& folder) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::wstring commandLine = L"\"" + program + L"\"";
    if (!::CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                          CREATE_NEW_PROCESS_GROUP, nullptr, folder.c_str(), &startup, &process)) {
        return ::GetLastError();
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return 0;
}

// Asks the user for an administrator's rights, which Windows demands for some installers.
bool startElevated(const std::wstring& program, const std::wstring& folder) {
    SHELLEXECUTEINFOW execution{};
    execution.cbSize = sizeof execution;
    execution.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    execution.lpFile = program.c_str();
    execution.lpDirectory = folder.c_str();
    execution.nShow = SW_SHOWNORMAL;
    return ::ShellExecuteExW(&execution) != 0;
}

}  // namespace

bool WindowsShell::start(std::string_view folder, std::string_view name) {
    if (!isPlainFileName(name)) return false;
    const std::string path = std::string(folder) + "\\" + std::string(name);
    const auto plainFolder = files_.plainPath(folder);
    const auto program = files_.plainPath(path);
    if (!plainFolder || !program || !files_.fileExists(path)) return false;
    const DWORD error = createProcess(*program, *plainFolder);
    return error == 0 || (error == elevationRequired && startElevated(*program, *plainFolder));
}

void WindowsShell::showCritical(std::string_view title, std::string_view prompt) {
    USEROBJECTFLAGS flags{};
    // A service has a window station that nobody sees, and a box there would wait for ever.
    if (!::GetUserObjectInformationW(::GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags,
                                     nullptr) ||
        (flags.dwFlags & WSF_VISIBLE) == 0) {
        return;
    }
    ::MessageBoxW(nullptr, toWide(prompt).c_str(), toWide(title).c_str(),
                  MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND);
}

}  // namespace tandril::platform
