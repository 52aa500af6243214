#include "platform/process_lock.h"

#include <windows.h>

#include <array>

#include "platform/fault.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_fault.h"
#include "platform/windows/wide.h"

namespace tandril::platform {
namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void fail(const std::string& what, DWORD error) {
    throw Fault(what + ": " + systemErrorText(error));
}

// The file is locked as long as it is open: others may read it, and neither write nor remove it.
HANDLE openAlone(const std::string& path) {
    return ::CreateFileW(toWide(path).c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                         nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT,
                         nullptr);
}

std::string firstLine(const std::string& path) {
    const Handle file(::CreateFileW(toWide(path).c_str(), GENERIC_READ, shareAll, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    std::array<char, 32> text{};
    DWORD count = 0;
    if (!file.valid() ||
        !::ReadFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &count, nullptr)) {
        return {};
    }
    const std::string start(text.data(), count);
    return start.substr(0, start.find('\n'));
}

bool empty(HANDLE file) {
    return ::SetFilePointerEx(file, {}, nullptr, FILE_BEGIN) && ::SetEndOfFile(file);
}

bool writeProcessId(HANDLE file) {
    const std::string text = std::to_string(::GetCurrentProcessId()) + "\n";
    DWORD written = 0;
    return empty(file) &&
           ::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

}  // namespace

struct ProcessLock::State {
    Handle file;
};

ProcessLock::ProcessLock(const std::string& path)
    : state_(std::make_unique<State>(State{Handle(openAlone(path))})) {
    const DWORD error = ::GetLastError();
    if (state_->file.valid()) {
        if (!writeProcessId(state_->file.get())) fail("cannot write " + path, ::GetLastError());
    } else if (error == ERROR_SHARING_VIOLATION) {
        holder_ = firstLine(path);
    } else {
        fail("cannot create " + path, error);
    }
}

ProcessLock::~ProcessLock() {
    // Should that fail, the lock is gone all the same.
    if (isHeld()) empty(state_->file.get());
}

bool ProcessLock::isHeld() const {
    return state_->file.valid();
}

}  // namespace tandril::platform
