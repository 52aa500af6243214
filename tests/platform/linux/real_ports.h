#pragma once

#include <string>

#include "platform/home/registry_file.h"
#include "platform/linux/home_files.h"
#include "support/temporary_home.h"

// The ports of this platform, for the cases that every implementation has to keep to.
namespace tandril::test {

// Files in an empty folder of their own.
struct RealFiles {
    TemporaryHome home;
    platform::HomeFiles files{home.path()};
};

// A registry of its own, with nothing in it.
struct RealRegistry {
    TemporaryHome home;
    platform::RegistryFile registry{home.pathOf("registry.reg")};
};

// Opens the SQLite file of that path, which need not exist.
inline std::string sqliteConnection(const std::string& path) {
    return "Driver=libsqlite3odbc.so;StepAPI=1;Database=" + path;
}

}  // namespace tandril::test
