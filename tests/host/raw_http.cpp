#include "host/raw_http.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>

namespace tandril::test {

std::string RawConnection::readAll(std::chrono::milliseconds time) const {
    const auto end = std::chrono::steady_clock::now() + time;
    std::string bytes;
    std::array<char, 65536> chunk{};
    while (true) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            end - std::chrono::steady_clock::now());
        const PlainSocket::Received received =
            socket_.receive(chunk, std::max(left, std::chrono::milliseconds(0)));
        if (received.state == PlainSocket::State::Ended) {
            return bytes;
        }
        if (received.state == PlainSocket::State::Reset) {
            throw std::runtime_error("the connection was reset after: " + bytes);
        }
        if (received.size == 0) {
            throw std::runtime_error("the connection stays open after: " + bytes);
        }
        bytes.append(chunk.data(), received.size);
    }
}

RawResponse::RawResponse(const std::string& bytes) {
    const std::size_t blank = bytes.find("\r\n\r\n");
    head = bytes.substr(0, blank == std::string::npos ? blank : blank + 2);
    body = blank == std::string::npos ? "" : bytes.substr(blank + 4);
}

int RawResponse::status() const {
    constexpr std::string_view version = "HTTP/1.1 ";
    return head.starts_with(version) ? std::atoi(head.c_str() + version.size()) : 0;
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
