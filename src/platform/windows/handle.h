#pragma once

#include <windows.h>

#include <utility>

namespace tandril::platform {

// A handle of Windows, closed when destroyed.
class Handle {
  public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() { close(); }
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    Handle& operator=(Handle&&) = delete;

    // Some functions say that they have none by the one value, some by the other.
    bool valid() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    void close() {
        if (valid()) ::CloseHandle(std::exchange(handle_, nullptr));
    }

  private:
    HANDLE handle_;
};

}  // namespace tandril::platform
