#pragma once

#include <string>
#include <string_view>

#include "component/client20.h"
#include "component/module.h"
#include "component/paths.h"
#include "platform/fault.h"
#include "support/test_machine.h"

namespace tandril::test {

inline constexpr auto hklm = platform::RegistryRoot::LocalMachine;
inline constexpr auto hkcu = platform::RegistryRoot::CurrentUser;
inline constexpr std::string_view settingsKey = "SOFTWARE\\Vorn\\Vorn Tandril";
inline constexpr std::string_view sourceKey = "SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data";

// A component on a machine of fakes.
struct Workstation {
    TestMachine machine;
    Module module{machine.machine()};
    Client20 client{module};

    // A setting as it stands on the disk; "(none)" when it is missing.
    std::string setting(std::string_view name) {
        machine.registry.refresh();
        return machine.registry.read(hklm, settingsKey, name).value_or("(none)");
    }
    void putStore(std::string_view text) { machine.files.put(paths::store, text); }
    void putMapper(std::string_view text) { machine.files.put(paths::fieldMapper, text); }
    std::string log() const { return machine.files.content(paths::log); }
};

// The header line of an action in the log.
inline std::string logHeader(std::string_view action) {
    return "|--------- Logged On:  15/11/2026 11:59:39  For User Action: " + std::string(action) +
           "  ----------\r\n";
}

}  // namespace tandril::test
