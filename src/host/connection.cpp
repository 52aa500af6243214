#include "host/connection.h"

#include <algorithm>
#include <cstring>

namespace tandril::host {

Connection::Connection(socket_t socket, const platform::StopEvent& stop,
                       const ConnectionLimits& limits)
    : socket_(static_cast<platform::SocketHandle>(socket), stop),
      limits_(limits),
      deadline_(Clock::now() + limits.head) {}

void Connection::beginBody() {
    inHead_ = false;
    deadline_ = Clock::now() + limits_.body;
}

void Connection::linger() {
    socket_.endSending();
    const Clock::time_point end = Clock::now() + limits_.linger;
    while (socket_.receive(buffer_, end) > 0) {
    }
}

ssize_t Connection::read(char* data, std::size_t size) {
    if (begin_ == end_ && !fill()) {
        return -1;
    }
    const std::size_t count = std::min(size, end_ - begin_);
    if (inHead_) {
        headBytes_ += count;
        if (headBytes_ > limits_.headBytes) {
            return -1;
        }
    }
    std::memcpy(data, buffer_.data() + begin_, count);
    begin_ += count;
    return static_cast<ssize_t>(count);
}

// A client that does not read does not hold up the end of the host for long.
ssize_t Connection::write(const char* data, std::size_t size) {
    return socket_.send({data, size}, {limits_.write, limits_.linger}) ? static_cast<ssize_t>(size)
                                                                       : -1;
}

// Only this machine can connect, and nothing depends on which of its ports did.
void Connection::get_remote_ip_and_port(std::string& ip, int& port) const {
    ip = "127.0.0.1";
    port = 0;
}

void Connection::get_local_ip_and_port(std::string& ip, int& port) const {
    ip = "127.0.0.1";
    port = 0;
}

bool Connection::fill() {
    begin_ = 0;
    end_ = socket_.receive(buffer_, deadline_);
    return end_ > 0;
}

}  // namespace tandril::host
