#pragma once

#include <httplib.h>

#include <array>
#include <cstddef>
#include <string>

#include "host/connection_limits.h"
#include "platform/connection_socket.h"

namespace tandril::host {

// A client's socket as the HTTP library reads and writes it, with deadlines: the library's own
// timeouts start anew with every byte.
class Connection : public httplib::Stream {
  public:
    // Takes the socket over. Reading ends when the event says stop.
    Connection(socket_t socket, const platform::StopEvent& stop, const ConnectionLimits& limits);

    // The head has been read; from now on the limits of the body hold.
    void beginBody();

    // Tells the client that the answer is over and takes in what it still sends: closing a socket
    // with unread data would destroy the answer on its way.
    void linger();

    bool is_readable() const override { return true; }
    bool is_writable() const override { return true; }
    ssize_t read(char* data, std::size_t size) override;
    ssize_t write(const char* data, std::size_t size) override;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    socket_t socket() const override { return static_cast<socket_t>(socket_.handle()); }

  private:
    using Clock = platform::ConnectionSocket::Clock;

    bool fill();

    platform::ConnectionSocket socket_;
    ConnectionLimits limits_;
    Clock::time_point deadline_;
    bool inHead_ = true;
    std::size_t headBytes_ = 0;
    std::array<char, 16384> buffer_{};
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

}  // namespace tandril::host
