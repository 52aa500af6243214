#include "platform/machine.h"

#include <cstdlib>

#include "platform/fault.h"
#include "platform/home/home_database.h"
#include "platform/home/registry_file.h"
#include "platform/utf8_path.h"
#include "platform/windows/drive_files.h"
#include "platform/windows/home_files.h"
#include "platform/windows/source_database.h"
#include "platform/windows/system_registry.h"
#include "platform/windows/wall_clock.h"
#include "platform/windows/wide.h"
#include "platform/windows/windows_shell.h"

namespace tandril::platform {
namespace {

class WindowsMachine final : public OwnedMachine {
  public:
    Machine machine() override { return {registry_, files_, database_, shell_, clock_}; }

  private:
    SystemRegistry registry_;
    DriveFiles files_;
    SourceDatabase database_;
    WindowsShell shell_{files_};
    WallClock clock_;
};

class HomeMachine final : public OwnedMachine {
  public:
    explicit HomeMachine(const std::filesystem::path& home)
        : registry_(utf8FromPath(home / "registry.reg")), files_(home.wstring()) {}

    Machine machine() override { return {registry_, files_, database_, shell_, clock_}; }

  private:
    RegistryFile registry_;
    HomeFiles files_;
    HomeDatabase database_{[this](std::string_view path) { return files_.realPath(path); },
                           registry_};
    WindowsShell shell_{files_};
    WallClock clock_{L"en-GB"};
};

// The working directory may change, the home must not. Paths are taken to the letter, so that they
// have backslashes only, and none at the end.
std::filesystem::path absoluteHome(const std::string& home) {
    std::filesystem::path path =
        std::filesystem::absolute(pathFromUtf8(home)).lexically_normal().make_preferred();
    return path.has_filename() ? path : path.parent_path();
}

}  // namespace

std::unique_ptr<OwnedMachine> openMachine(const std::string& home) {
    if (home.empty()) return std::make_unique<WindowsMachine>();
    return std::make_unique<HomeMachine>(absoluteHome(home));
}

// Windows has its own drive and registry.
std::string defaultHome() {
    const wchar_t* named = ::_wgetenv(L"TANDRIL_HOME");
    return named == nullptr ? std::string() : toUtf8(named);
}

std::string hostPath(const std::string& home, std::string_view systemPath) {
    const DriveFiles files(home.empty() ? L"C:" : absoluteHome(home).wstring());
    if (const auto path = files.plainPath(systemPath)) return toUtf8(*path);
    throw Fault("there is no place for \"" + std::string(systemPath) + "\"");
}

}  // namespace tandril::platform
