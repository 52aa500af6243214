#pragma once

#include "component/client20.h"
#include "component/module.h"
#include "support/test_machine.h"

namespace tandril::test {

// A Client20 on a machine of its own, with nothing on it.
class ClientOnNewMachine {
  public:
    Client20& client() { return client_; }

  private:
    TestMachine machine_;
    Module module_{machine_.machine()};
    Client20 client_{module_};
};

}  // namespace tandril::test
