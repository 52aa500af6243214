#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "host/plain_socket.h"

namespace tandril::test {
namespace {

int made(int socket) {
    if (socket < 0) throw std::runtime_error("the system has no socket");
    return socket;
}

sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

}  // namespace

PlainSocket PlainSocket::connectedTo(int port) {
    PlainSocket socket(made(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)));
    sockaddr_in address = loopback(port);
    if (::connect(static_cast<int>(socket.handle_), reinterpret_cast<sockaddr*>(&address),
                  sizeof address) != 0) {
        throw std::runtime_error("cannot connect to port " + std::to_string(port));
    }
    return socket;
}

PlainSocket PlainSocket::listening() {
    PlainSocket socket(made(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)));
    sockaddr_in address = loopback(0);
    if (::bind(static_cast<int>(socket.handle_), reinterpret_cast<sockaddr*>(&address),
               sizeof address) != 0 ||
        ::listen(static_cast<int>(socket.handle_), 8) != 0) {
        throw std::runtime_error("cannot listen");
    }
    return socket;
}

PlainSocket::~PlainSocket() {
    if (handle_ >= 0) ::close(static_cast<int>(handle_));
}

PlainSocket::PlainSocket(PlainSocket&& other) noexcept
    : handle_(std::exchange(other.handle_, -1)) {}

int PlainSocket::port() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(static_cast<int>(handle_), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

PlainSocket PlainSocket::accept() const {
    return PlainSocket(made(::accept4(static_cast<int>(handle_), nullptr, nullptr, SOCK_CLOEXEC)));
}

bool PlainSocket::send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count =
            ::send(static_cast<int>(handle_), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void PlainSocket::endSending() const {
    ::shutdown(static_cast<int>(handle_), SHUT_WR);
}

PlainSocket::Received PlainSocket::receive(std::span<char> buffer,
                                           std::optional<std::chrono::milliseconds> time) const {
    pollfd waiting{static_cast<int>(handle_), POLLIN, 0};
    if (::poll(&waiting, 1, time ? static_cast<int>(time->count()) : -1) <= 0) return {};
    const ssize_t count = ::recv(static_cast<int>(handle_), buffer.data(), buffer.size(), 0);
    if (count < 0) return {State::Reset};
    return {count == 0 ? State::Ended : State::Open, static_cast<std::size_t>(count)};
}

}  // namespace tandril::test
