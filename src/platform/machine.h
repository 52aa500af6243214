#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/database.h"
#include "platform/file_system.h"
#include "platform/registry.h"
#include "platform/shell.h"

namespace tandril::platform {

// The five ports of one machine. Does not own them.
struct Machine {
    Registry& registry;
    FileSystem& files;
    Database& database;
    Shell& shell;
    Clock& clock;
};

// A machine together with its ports.
class OwnedMachine {
  public:
    virtual ~OwnedMachine() = default;
    virtual Machine machine() = 0;
};

// The machine that the programs run on. `home` is the folder that stands for it; an empty one
// stands for the machine itself, where the platform has a registry and a drive "C:" of its own, and
// is a fault elsewhere. A home that does not exist is no fault: its drive "C:" is missing then, and
// nothing is created.
std::unique_ptr<OwnedMachine> openMachine(const std::string& home);

// The home when none is named: $TANDRIL_HOME, else on Windows the machine itself, elsewhere
// $XDG_DATA_HOME/tandril, else ~/.local/share/tandril. Only the last two are created when they are
// missing; throws Fault when that fails, or when the environment names no place.
std::string defaultHome();

// Where a system path lies on this machine, for programs that do not go through the ports. Throws
// Fault for a path that is none, or that might lead out of the home.
std::string hostPath(const std::string& home, std::string_view systemPath);

}  // namespace tandril::platform
