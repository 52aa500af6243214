#include "host/connection.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tandril::host {

Connection::Connection(int socket, int stop, const ConnectionLimits& limits)
    : socket_(socket), stop_(stop), limits_(limits), deadline_(Clock::now() + limits.head) {
    ::fcntl(socket_, F_SETFD, FD_CLOEXEC);
    const int on = 1;
    ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

Connection::~Connection() {
    ::close(socket_);
}

void Connection::beginBody() {
    inHead_ = false;
    deadline_ = Clock::now() + limits_.body;
}

void Connection::linger() {
    ::shutdown(socket_, SHUT_WR);
    const Clock::time_point end = Clock::now() + limits_.linger;
    while (waitToRead(end)) {
        if (::recv(socket_, buffer_.data(), buffer_.size(), MSG_DONTWAIT) <= 0) {
            return;
        }
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

ssize_t Connection::write(const char* data, std::size_t size) {
    std::size_t written = 0;
    while (written < size) {
        if (!waitToWrite()) {
            return -1;
        }
        const ssize_t count =
            ::send(socket_, data + written, size - written, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && errno != EAGAIN && errno != EINTR) {
            return -1;
        }
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return static_cast<ssize_t>(written);
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

bool Connection::waitToRead(Clock::time_point deadline) const {
    std::array<pollfd, 2> waiting{{{socket_, POLLIN, 0}, {stop_, POLLIN, 0}}};
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0) {
        return false;
    }
    const int ready = ::poll(waiting.data(), waiting.size(), static_cast<int>(left));
    return ready > 0 && waiting[1].revents == 0;
}

// A client that does not read does not hold up the end of the host for long.
bool Connection::waitToWrite() const {
    std::array<pollfd, 2> waiting{{{socket_, POLLOUT, 0}, {stop_, POLLIN, 0}}};
    if (::poll(waiting.data(), waiting.size(), static_cast<int>(limits_.write.count())) <= 0) {
        return false;
    }
    return waiting[0].revents != 0 ||
           ::poll(waiting.data(), 1, static_cast<int>(limits_.linger.count())) > 0;
}

bool Connection::fill() {
    while (waitToRead(deadline_)) {
        const ssize_t count = ::recv(socket_, buffer_.data(), buffer_.size(), MSG_DONTWAIT);
        if (count > 0) {
            begin_ = 0;
            end_ = static_cast<std::size_t>(count);
            return true;
        }
        if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
            return false;
        }
    }
    return false;
}

}  // namespace tandril::host
