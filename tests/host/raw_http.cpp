#include "host/raw_http.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>

namespace tandril::test {

RawConnection::RawConnection(int port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        ::close(socket_);
        throw std::runtime_error("cannot connect to port " + std::to_string(port));
    }
}

RawConnection::~RawConnection() {
    ::close(socket_);
}

bool RawConnection::send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void RawConnection::endSending() const {
    ::shutdown(socket_, SHUT_WR);
}

std::string RawConnection::readAll(std::chrono::milliseconds time) const {
    const auto end = std::chrono::steady_clock::now() + time;
    std::string bytes;
    std::array<char, 65536> chunk{};
    while (true) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            end - std::chrono::steady_clock::now());
        pollfd waiting{socket_, POLLIN, 0};
        if (left.count() <= 0 || ::poll(&waiting, 1, static_cast<int>(left.count())) <= 0) {
            throw std::runtime_error("the connection stays open after: " + bytes);
        }
        const ssize_t count = ::recv(socket_, chunk.data(), chunk.size(), 0);
        if (count < 0) {
            throw std::runtime_error("the connection was reset after: " + bytes);
        }
        if (count == 0) {
            return bytes;
        }
        bytes.append(chunk.data(), static_cast<std::size_t>(count));
    }
}

RawResponse::RawResponse(const std::string& bytes) {
    const std::size_t blank = bytes.find("\r\n\r\n");
    head = bytes.substr(0, blank == std::string::npos ? blank : blank + 2);
    body = blank == std::string::npos ? "" : bytes.substr(blank + 4);
}

int RawResponse::status() const {
    constexpr std::string_view kVersion = "HTTP/1.1 ";
    return head.starts_with(kVersion) ? std::atoi(head.c_str() + kVersion.size()) : 0;
}

std::string RawResponse::header(std::string_view name) const {
    const std::string start = "\r\n" + std::string(name) + ": ";
    const std::size_t at = head.find(start);
    if (at == std::string::npos) {
        return "(none)";
    }
    const std::size_t begin = at + start.size();
    return head.substr(begin, head.find("\r\n", begin) - begin);
}

RawResponse exchange(int port, std::string_view request) {
    const RawConnection connection(port);
    connection.send(request);
    return RawResponse(connection.readAll());
}

}  // namespace tandril::test
