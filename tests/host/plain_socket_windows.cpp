// Before windows.h, which would bring an older one.
#include <winsock2.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "host/plain_socket.h"

namespace tandril::test {
namespace {

constexpr std::intptr_t noSocket = -1;

SOCKET native(std::intptr_t handle) {
    return static_cast<SOCKET>(handle);
}

std::intptr_t made(SOCKET socket) {
    if (socket == INVALID_SOCKET) throw std::runtime_error("the system has no socket");
    return static_cast<std::intptr_t>(socket);
}

std::intptr_t makeSocket() {
    WSADATA ignored{};
    ::WSAStartup(MAKEWORD(2, 2), &ignored);
    return made(::socket(AF_INET, SOCK_STREAM, 0));
}

sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = ::htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    return address;
}

}  // namespace

PlainSocket PlainSocket::connectedTo(int port) {
    PlainSocket socket(makeSocket());
    sockaddr_in address = loopback(port);
    if (::connect(native(socket.handle_), reinterpret_cast<sockaddr*>(&address), sizeof address) !=
        0) {
        throw std::runtime_error("cannot connect to port " + std::to_string(port));
    }
    return socket;
}

PlainSocket PlainSocket::listening() {
    PlainSocket socket(makeSocket());
    sockaddr_in address = loopback(0);
    if (::bind(native(socket.handle_), reinterpret_cast<sockaddr*>(&address), sizeof address) !=
            0 ||
        ::listen(native(socket.handle_), 8) != 0) {
        throw std::runtime_error("cannot listen");
    }
    return socket;
}

PlainSocket::~PlainSocket() {
    if (handle_ != noSocket) ::closesocket(native(handle_));
}

PlainSocket::PlainSocket(PlainSocket&& other) noexcept
    : handle_(std::exchange(other.handle_, noSocket)) {}

int PlainSocket::port() const {
    sockaddr_in address{};
    int size = sizeof address;
    ::getsockname(native(handle_), reinterpret_cast<sockaddr*>(&address), &size);
    return ::ntohs(address.sin_port);
}

PlainSocket PlainSocket::accept() const {
    return PlainSocket(made(::accept(native(handle_), nullptr, nullptr)));
}

bool PlainSocket::send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const int count = ::send(native(handle_), bytes.data(), static_cast<int>(bytes.size()), 0);
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void PlainSocket::endSending() const {
    ::shutdown(native(handle_), SD_SEND);
}

PlainSocket::Received PlainSocket::receive(std::span<char> buffer,
                                           std::optional<std::chrono::milliseconds> time) const {
    WSAPOLLFD waiting{native(handle_), POLLIN, 0};
    if (::WSAPoll(&waiting, 1, time ? static_cast<int>(time->count()) : -1) <= 0) return {};
    const int count = ::recv(native(handle_), buffer.data(), static_cast<int>(buffer.size()), 0);
    if (count < 0) return {State::Reset};
    return {count == 0 ? State::Ended : State::Open, static_cast<std::size_t>(count)};
}

}  // namespace tandril::test
