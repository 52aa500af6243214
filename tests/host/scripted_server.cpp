#include "host/scripted_server.h"

#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace tandril::test {
namespace {

std::size_t bodyLength(const std::string& head) {
    constexpr std::string_view lengthHeader = "Content-Length: ";
    const std::size_t at = head.find(lengthHeader);
    return at == std::string::npos
               ? 0
               : static_cast<std::size_t>(std::atoll(head.c_str() + at + lengthHeader.size()));
}

std::string readRequest(const PlainSocket& socket) {
    std::string bytes;
    std::array<char, 65536> chunk{};
    while (true) {
        const std::size_t blank = bytes.find("\r\n\r\n");
        if (blank != std::string::npos && bytes.size() >= blank + 4 + bodyLength(bytes)) {
            return bytes;
        }
        const PlainSocket::Received received = socket.receive(chunk);
        if (received.size == 0) {
            return bytes;
        }
        bytes.append(chunk.data(), received.size);
    }
}

}  // namespace

ScriptedServer::ScriptedServer(std::string answer, Then then)
    : answer_(std::move(answer)), then_(then), listener_(PlainSocket::listening()) {
    thread_ = std::thread([this] { serve(); });
}

ScriptedServer::~ScriptedServer() {
    isOver_ = true;
    const PlainSocket last = PlainSocket::connectedTo(listener_.port());
    thread_.join();
}

std::string ScriptedServer::url() const {
    return "http://" + authority();
}

std::string ScriptedServer::authority() const {
    return "127.0.0.1:" + std::to_string(listener_.port());
}

std::vector<std::string> ScriptedServer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void ScriptedServer::serve() {
    while (true) {
        PlainSocket socket = listener_.accept();
        if (isOver_) {
            return;
        }
        answerOne(std::move(socket));
    }
}

void ScriptedServer::answerOne(PlainSocket socket) {
    std::string request = readRequest(socket);
    {
        const std::lock_guard lock(mutex_);
        requests_.push_back(std::move(request));
    }
    socket.send(answer_);
    if (then_ == Then::KeepOpen) {
        open_.push_back(std::move(socket));
    }
}

}  // namespace tandril::test
