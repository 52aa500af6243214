#include "platform/stop_signals.h"

#include <windows.h>

#include <atomic>

#include "platform/windows/handle.h"

namespace tandril::platform {
namespace {

// What the two sides tell each other. The system calls a function that it gives no object to, and
// its thread may still run when the object is gone, so that this is there for all of the process.
struct Control {
    Handle asked{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    Handle ended{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::atomic<bool> wasAsked = false;
};

Control& control() {
    static Control only;
    return only;
}

BOOL WINAPI onControl(DWORD kind) {
    const bool again = control().wasAsked.exchange(true);
    ::SetEvent(control().asked.get());
    if (kind == CTRL_C_EVENT || kind == CTRL_BREAK_EVENT) {
        return again ? FALSE : TRUE;  // FALSE: what Windows does by itself, which is to end
    }
    // The console is closed or the session ends: the process does as soon as this returns.
    ::WaitForSingleObject(control().ended.get(), INFINITE);
    return TRUE;
}

}  // namespace

struct StopSignals::State {};

StopSignals::StopSignals() {
    control().wasAsked = false;
    ::ResetEvent(control().asked.get());
    ::ResetEvent(control().ended.get());
    // A program that was started to ignore Ctrl-C gives that on to those that it starts.
    ::SetConsoleCtrlHandler(nullptr, FALSE);
    ::SetConsoleCtrlHandler(onControl, TRUE);
}

StopSignals::~StopSignals() {
    ::SetConsoleCtrlHandler(onControl, FALSE);
    ::SetEvent(control().ended.get());
}

void StopSignals::wait() {
    ::WaitForSingleObject(control().asked.get(), INFINITE);
}

}  // namespace tandril::platform
