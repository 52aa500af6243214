#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <span>

#include "component/client20.h"
#include "component/methods.h"
#include "component/module.h"
#include "platform/machine.h"

namespace tandril::com {

// What all objects of the process share, and what keeps the DLL loaded. The objects of one page are
// used from one thread, those of several pages from as many: calls take turns. A thread whose call
// shows a message box may call again from within it.
class Server {
  public:
    // The one of this DLL.
    static Server& instance();

    Server() = default;
    // Does not end what is still in use: the process is going down, and its other DLLs with it.
    ~Server() { static_cast<void>(state_.release()); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // Each object, and each lock of a class factory, is a use.
    void addUse() { ++uses_; }
    void removeUse() { --uses_; }

    // Whether nothing is in use; the shared state is given up then.
    bool tryUnload();

    // The shared state, made on first use. It lasts while something is in use. Throws Fault.
    Module& module();

    // Makes a call in its turn. Throws what the method throws.
    Value call(const Method& method, Client20& client, std::span<Value> arguments);

  private:
    struct State {
        std::unique_ptr<platform::OwnedMachine> machine = platform::openMachine({});
        Module module{machine->machine()};
    };

    std::atomic<long> uses_ = 0;
    std::recursive_mutex turn_;
    std::unique_ptr<State> state_;
};

// A use of the server as long as it lives.
class ServerUse {
  public:
    ServerUse() { Server::instance().addUse(); }
    ~ServerUse() { Server::instance().removeUse(); }
    ServerUse(const ServerUse&) = delete;
    ServerUse& operator=(const ServerUse&) = delete;
};

}  // namespace tandril::com
