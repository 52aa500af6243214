#pragma once

#include <windows.h>

#include <string>
#include <utility>

namespace tandril::platform {

// An open registry key, closed when destroyed.
class RegistryKey {
  public:
    RegistryKey() = default;
    ~RegistryKey() {
        if (key_ != nullptr) ::RegCloseKey(key_);
    }
    RegistryKey(RegistryKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    RegistryKey& operator=(RegistryKey&&) = delete;

    // Each returns what the function of Windows returned, 0 for success.
    LSTATUS open(HKEY parent, const std::wstring& path, REGSAM rights) {
        return ::RegOpenKeyExW(parent, path.c_str(), 0, rights, &key_);
    }
    // `isNew` tells whether the key was not there before.
    LSTATUS create(HKEY parent, const std::wstring& path, REGSAM rights, bool* isNew = nullptr) {
        DWORD disposition = 0;
        const LSTATUS status = ::RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, rights,
                                                 nullptr, &key_, &disposition);
        if (isNew != nullptr) *isNew = disposition == REG_CREATED_NEW_KEY;
        return status;
    }

    bool isOpen() const { return key_ != nullptr; }
    HKEY get() const { return key_; }

  private:
    HKEY key_ = nullptr;
};

}  // namespace tandril::platform
