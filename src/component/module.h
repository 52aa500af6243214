#pragma once

#include "platform/machine.h"

namespace tandril {

// The module-wide state: what all Client20 objects of a process share and what outlives their
// calls. A program makes one; a test makes as many as it likes. Not safe for concurrent use.
class Module {
  public:
    explicit Module(platform::Machine machine) : machine_(machine) {}
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    platform::Machine& machine() { return machine_; }

  private:
    platform::Machine machine_;
};

}  // namespace tandril
