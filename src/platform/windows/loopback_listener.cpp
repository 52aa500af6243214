#include "platform/loopback_listener.h"

// Before windows.h, which would bring an older one.
#include <winsock2.h>

#include <cstdint>
#include <utility>

namespace tandril::platform {
namespace {

constexpr SocketHandle noSocket = -1;
static_assert(static_cast<SOCKET>(noSocket) == INVALID_SOCKET);

// Sockets are there once a process has asked for them; they go with it.
class SocketLibrary {
  public:
    SocketLibrary() {
        WSADATA ignored{};
        ::WSAStartup(MAKEWORD(2, 2), &ignored);
    }
};

}  // namespace

std::optional<LoopbackListener> LoopbackListener::open(int port) {
    static const SocketLibrary library;
    LoopbackListener listener(static_cast<SocketHandle>(::WSASocketW(
        AF_INET, SOCK_STREAM, 0, nullptr, 0, WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT)));
    if (listener.socket_ == noSocket || !listener.listen(port)) return std::nullopt;
    return listener;
}

LoopbackListener::~LoopbackListener() {
    if (socket_ != noSocket) ::closesocket(static_cast<SOCKET>(socket_));
}

LoopbackListener::LoopbackListener(LoopbackListener&& other) noexcept
    : socket_(other.release()), port_(other.port_) {}

SocketHandle LoopbackListener::release() {
    return std::exchange(socket_, noSocket);
}

bool LoopbackListener::listen(int port) {
    const auto socket = static_cast<SOCKET>(socket_);
    // Without it any process could listen on the same port and take the connections meant for us.
    const BOOL on = TRUE;
    if (::setsockopt(socket, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&on),
                     sizeof on) != 0) {
        return false;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = ::htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    int size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(socket, any, size) != 0 || ::listen(socket, SOMAXCONN) != 0 ||
        ::getsockname(socket, any, &size) != 0) {
        return false;
    }
    port_ = ::ntohs(address.sin_port);
    return true;
}

}  // namespace tandril::platform
