#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/machine.h"
#include "store/order_store.h"

namespace tandril {

// The module-wide state: what all Client20 objects of a process share and what outlives their
// calls. A program makes one; a test makes as many as it likes. Not safe for concurrent use.
struct Module {
    explicit Module(platform::Machine ports) : machine(ports) {}
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    platform::Machine machine;

    // The current database's name as it was when the component was last initialised.
    std::string currentDatabase;

    // The order store as the last call that loaded it left it; empty when that load failed. Only
    // the cost lines of the page read it; every other call loads the file anew.
    std::unique_ptr<const store::OrderStore> lastStore;

    // The orders that had a refused record when the report was last read.
    std::vector<std::string> errorOrders;

    // The connection to the master data, while it is open.
    std::unique_ptr<platform::Connection> connection;
};

}  // namespace tandril
