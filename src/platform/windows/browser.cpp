#include "platform/browser.h"

#include <windows.h>
// Needs the types of windows.h.
#include <shellapi.h>

#include "platform/windows/wide.h"

namespace tandril::platform {

bool openInBrowser(const std::string& address) {
    const std::wstring wide = toWide(address);
    SHELLEXECUTEINFOW execution{};
    execution.cbSize = sizeof execution;
    execution.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    execution.lpVerb = L"open";
    execution.lpFile = wide.c_str();
    execution.nShow = SW_SHOWNORMAL;
    return ::ShellExecuteExW(&execution) != 0;
}

}  // namespace tandril::platform
