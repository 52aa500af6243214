#pragma once

#include "platform/machine.h"
#include "support/fake_database.h"
#include "support/files_wrapper.h"
#include "support/fixed_clock.h"
#include "support/memory_files.h"
#include "support/memory_registry.h"
#include "support/recording_shell.h"

namespace tandril::test {

// A machine of fakes. `files` is where tests put and look at files; what the machine hands out goes
// through `faults`, on which tests make operations fail.
class TestMachine : public platform::OwnedMachine {
  public:
    platform::Machine machine() override { return {registry, faults, database, shell, clock}; }

    MemoryRegistry registry;
    MemoryFiles files;
    FaultyFiles faults{files};
    FakeDatabase database;
    RecordingShell shell;
    FixedClock clock;
};

}  // namespace tandril::test
