#include "surface/com/server.h"

namespace tandril::com {

Server& Server::instance() {
    static Server server;
    return server;
}

bool Server::tryUnload() {
    // Without waiting for a call, which may last as long as a message box is open.
    if (uses_ != 0) return false;
    const std::lock_guard turn(turn_);
    if (uses_ != 0) return false;
    state_.reset();
    return true;
}

Module& Server::module() {
    const std::lock_guard turn(turn_);
    if (!state_) state_ = std::make_unique<State>();
    return state_->module;
}

Value Server::call(const Method& method, Client20& client, std::span<Value> arguments) {
    const std::lock_guard turn(turn_);
    return method.invoke(client, arguments);
}

}  // namespace tandril::com
