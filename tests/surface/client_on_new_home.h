#pragma once

#include <memory>

#include "component/client20.h"
#include "component/module.h"
#include "platform/machine.h"
#include "support/temporary_home.h"

namespace tandril::test {

// A Client20 on an empty home of its own.
class ClientOnNewHome {
  public:
    Client20& client() { return client_; }

  private:
    TemporaryHome folder_;
    std::unique_ptr<platform::OwnedMachine> machine_ = platform::openMachine(folder_.path());
    Module module_{machine_->machine()};
    Client20 client_{module_};
};

}  // namespace tandril::test
