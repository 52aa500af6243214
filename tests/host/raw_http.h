#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "host/plain_socket.h"

// HTTP as bytes on a socket, so that a test can send what no client library would.
namespace tandril::test {

// A connection to a port of 127.0.0.1.
class RawConnection {
  public:
    explicit RawConnection(int port) : socket_(PlainSocket::connectedTo(port)) {}

    // Returns false when the other side takes no more.
    bool send(std::string_view bytes) const { return socket_.send(bytes); }
    void endSending() const { socket_.endSending(); }

    // Everything until the other side closes. Throws when it does not do so in time.
    std::string readAll(std::chrono::milliseconds time = std::chrono::seconds(60)) const;

  private:
    PlainSocket socket_;
};

// A response taken apart.
struct RawResponse {
    std::string head;  // status line and headers, lines ended by "\r\n"
    std::string body;

    RawResponse() = default;
    explicit RawResponse(const std::string& bytes);

    // The number in the status line; 0 when there is none.
    int status() const;
    // The value of a header, by its name as the host writes it; "(none)" when there is none.
    std::string header(std::string_view name) const;
};

// Sends a whole request on a connection of its own and returns the response.
RawResponse exchange(int port, std::string_view request);

}  // namespace tandril::test
