#include "platform/loopback_listener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <utility>

namespace tandril::platform {
namespace {

// As many as come at once: where fewer fit, the next one of a browser would try again after a
// second.
constexpr int waitingConnections = 512;

}  // namespace

std::optional<LoopbackListener> LoopbackListener::open(int port) {
    LoopbackListener listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (listener.socket_ < 0 || !listener.listen(port)) return std::nullopt;
    return listener;
}

LoopbackListener::~LoopbackListener() {
    if (socket_ >= 0) ::close(static_cast<int>(socket_));
}

LoopbackListener::LoopbackListener(LoopbackListener&& other) noexcept
    : socket_(other.release()), port_(other.port_) {}

SocketHandle LoopbackListener::release() {
    return std::exchange(socket_, -1);
}

bool LoopbackListener::listen(int port) {
    const int socket = static_cast<int>(socket_);
    // Connections of an earlier process that the system has not forgotten yet do not count;
    // another listener does.
    const int on = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(socket, any, size) != 0 || ::listen(socket, waitingConnections) != 0 ||
        ::getsockname(socket, any, &size) != 0) {
        return false;
    }
    port_ = ntohs(address.sin_port);
    return true;
}

}  // namespace tandril::platform
