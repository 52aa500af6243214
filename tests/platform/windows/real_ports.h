#pragma once

#include <windows.h>

#include <random>
#include <stdexcept>
#include <string>

#include "platform/windows/drive_files.h"
#include "platform/windows/registry_key.h"
#include "platform/windows/system_registry.h"
#include "platform/windows/wide.h"
#include "support/temporary_home.h"

// The ports of this platform, for the cases that every implementation has to keep to.
namespace tandril::test {

// Files in an empty folder of their own.
struct RealFiles {
    TemporaryHome home;
    platform::DriveFiles files{platform::toWide(home.path())};
};

// An empty key of the user's registry, gone with everything in it when destroyed.
class ScratchKey {
  public:
    ScratchKey() : path_(L"Software\\Tandril test " + std::to_wstring(std::random_device()())) {
        bool isNew = false;
        if (key_.create(HKEY_CURRENT_USER, path_, KEY_ALL_ACCESS, &isNew) != ERROR_SUCCESS ||
            !isNew) {
            throw std::runtime_error("cannot create a key of its own");
        }
    }
    ~ScratchKey() { ::RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str()); }
    ScratchKey(const ScratchKey&) = delete;
    ScratchKey& operator=(const ScratchKey&) = delete;

    HKEY get() const { return key_.get(); }

  private:
    std::wstring path_;
    platform::RegistryKey key_;
};

// A registry of its own, with nothing in it.
struct RealRegistry {
    ScratchKey localMachine;
    ScratchKey currentUser;
    platform::SystemRegistry registry{localMachine.get(), currentUser.get()};
};

// Opens the SQLite file of that path, which need not exist. Wine hands ODBC over to the driver
// manager of the system below, where drivers and files have the names of that system.
inline std::string sqliteConnection(const std::string& path) {
    using UnixName = char*(CDECL*)(const wchar_t*);
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (unixName == nullptr) return "Driver={SQLite3 ODBC Driver};StepAPI=1;Database=" + path;
    char* name = unixName(platform::toWide(path).c_str());
    std::string connection = "Driver=libsqlite3odbc.so;StepAPI=1;Database=" + std::string(name);
    ::HeapFree(::GetProcessHeap(), 0, name);
    return connection;
}

}  // namespace tandril::test
