#include "platform/machine.h"

#include "platform/windows/drive_files.h"
#include "platform/windows/source_database.h"
#include "platform/windows/system_registry.h"
#include "platform/windows/wall_clock.h"
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

}  // namespace

// Windows has its own drive and registry.
std::unique_ptr<OwnedMachine> openMachine(const std::string&) {
    return std::make_unique<WindowsMachine>();
}

std::string defaultHome() {
    return {};
}

}  // namespace tandril::platform
