#include "platform/machine.h"

#include <cstdlib>
#include <filesystem>

#include "platform/fault.h"
#include "platform/home/home_database.h"
#include "platform/home/registry_file.h"
#include "platform/linux/home_files.h"
#include "platform/linux/posix_file.h"
#include "platform/linux/shell.h"
#include "platform/linux/wall_clock.h"

namespace tandril::platform {
namespace {

class HomeMachine final : public OwnedMachine {
  public:
    explicit HomeMachine(const std::string& home)
        : registry_(home + "/registry.reg"), files_(home), shell_(home) {}

    Machine machine() override { return {registry_, files_, database_, shell_, clock_}; }

  private:
    RegistryFile registry_;
    HomeFiles files_;
    HomeDatabase database_{[this](std::string_view path) { return files_.realPath(path); },
                           registry_};
    DesktopShell shell_;
    WallClock clock_;
};

// An unset variable counts as an empty one.
std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::string dataFolder() {
    // By convention a relative one counts as unset.
    if (std::string data = environment("XDG_DATA_HOME"); data.starts_with('/')) return data;
    const std::string user = environment("HOME");
    if (user.empty()) {
        throw Fault("no home is named: set TANDRIL_HOME to the folder to work in");
    }
    return user + "/.local/share";
}

}  // namespace

std::unique_ptr<OwnedMachine> openMachine(const std::string& home) {
    if (home.empty()) throw Fault("the home's name is empty");
    // The working directory may change, the home must not.
    return std::make_unique<HomeMachine>(std::filesystem::absolute(home).string());
}

std::string defaultHome() {
    if (std::string named = environment("TANDRIL_HOME"); !named.empty()) return named;
    std::string home = dataFolder() + "/tandril";
    std::error_code error;
    std::filesystem::create_directories(home, error);
    if (error) throwSystemFault("create the folder", home, error.value());
    return home;
}

std::string hostPath(const std::string& home, std::string_view systemPath) {
    const HomeFiles files(std::filesystem::absolute(home).string());
    if (const auto path = files.realPath(systemPath)) return *path;
    throw Fault("there is no place for \"" + std::string(systemPath) + "\"");
}

}  // namespace tandril::platform
