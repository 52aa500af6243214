#include "host/scripted_server.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace tandril::test {
namespace {

std::size_t bodyLength(const std::string& head) {
    constexpr std::string_view kName = "Content-Length: ";
    const std::size_t at = head.find(kName);
    return at == std::string::npos
               ? 0
               : static_cast<std::size_t>(std::atoll(head.c_str() + at + kName.size()));
}

std::string readRequest(int socket) {
    std::string bytes;
    std::array<char, 65536> chunk{};
    while (true) {
        const std::size_t blank = bytes.find("\r\n\r\n");
        if (blank != std::string::npos && bytes.size() >= blank + 4 + bodyLength(bytes)) {
            return bytes;
        }
        const ssize_t count = ::recv(socket, chunk.data(), chunk.size(), 0);
        if (count <= 0) {
            return bytes;
        }
        bytes.append(chunk.data(), static_cast<std::size_t>(count));
    }
}

void sendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

}  // namespace

ScriptedServer::ScriptedServer(std::string answer, Then then)
    : answer_(std::move(answer)),
      then_(then),
      listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener_, any, size) != 0 || ::listen(listener_, 8) != 0 ||
        ::getsockname(listener_, any, &size) != 0) {
        throw std::runtime_error("the scripted server cannot listen");
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
}

ScriptedServer::~ScriptedServer() {
    ::shutdown(listener_, SHUT_RDWR);
    thread_.join();
    ::close(listener_);
    for (const int socket : open_) {
        ::close(socket);
    }
}

std::string ScriptedServer::url() const {
    return "http://" + authority();
}

std::string ScriptedServer::authority() const {
    return "127.0.0.1:" + std::to_string(port_);
}

std::vector<std::string> ScriptedServer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void ScriptedServer::serve() {
    for (int socket = 0; (socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
        answerOne(socket);
    }
}

void ScriptedServer::answerOne(int socket) {
    std::string request = readRequest(socket);
    {
        const std::lock_guard lock(mutex_);
        requests_.push_back(std::move(request));
    }
    sendAll(socket, answer_);
    if (then_ == Then::KeepOpen) {
        open_.push_back(socket);
    } else {
        ::close(socket);
    }
}

}  // namespace tandril::test
