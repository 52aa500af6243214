#pragma once

#include <optional>

#include "platform/connection_socket.h"

namespace tandril::platform {

// A TCP socket that listens on 127.0.0.1, and so to this machine only. Programs that this one
// starts do not inherit it.
class LoopbackListener {
  public:
    // Listens on the port, which no other process can take then; 0 takes any free one. Nothing when
    // the port cannot be had.
    static std::optional<LoopbackListener> open(int port);
    ~LoopbackListener();
    LoopbackListener(LoopbackListener&& other) noexcept;
    LoopbackListener(const LoopbackListener&) = delete;
    LoopbackListener& operator=(const LoopbackListener&) = delete;
    LoopbackListener& operator=(LoopbackListener&&) = delete;

    int port() const { return port_; }

    // Hands over the socket, which the caller has to close.
    SocketHandle release();

  private:
    explicit LoopbackListener(SocketHandle socket) : socket_(socket) {}
    bool listen(int port);

    SocketHandle socket_;
    int port_ = 0;
};

}  // namespace tandril::platform
