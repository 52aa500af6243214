#pragma once

#include <memory>
#include <string>

#include "component/client20.h"
#include "component/module.h"
#include "platform/machine.h"

namespace tandril::cli {

// A Client20 with all that it needs to work on a home. Throws Fault when the home cannot be opened;
// a home that does not exist can.
class LocalClient {
  public:
    explicit LocalClient(const std::string& home)
        : machine_(platform::openMachine(home)), module_(machine_->machine()), client_(module_) {}

    Client20& client() { return client_; }
    Module& module() { return module_; }

  private:
    std::unique_ptr<platform::OwnedMachine> machine_;
    Module module_;
    Client20 client_;
};

}  // namespace tandril::cli
