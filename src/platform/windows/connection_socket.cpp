#include "platform/connection_socket.h"

// Before windows.h, which would bring an older one.
#include <winsock2.h>

#include <algorithm>
#include <array>

#include "platform/fault.h"
#include "platform/windows/handle.h"

namespace tandril::platform {
namespace {

using Clock = ConnectionSocket::Clock;

constexpr std::size_t largestPiece = std::size_t{1} << 20U;

int pieceOf(std::size_t size) {
    return static_cast<int>(std::min(size, largestPiece));
}

// Rounded up: a wait that ends a moment too early would be one more turn of a loop for nothing.
DWORD millisecondsUntil(Clock::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    return static_cast<DWORD>(std::clamp<decltype(left)>(left, 0, INFINITE - 1));
}

}  // namespace

struct StopEvent::State {
    Handle event{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

StopEvent::StopEvent() : state_(std::make_unique<State>()) {
    if (!state_->event.valid()) throw Fault("the system has no event for the connections");
}

StopEvent::~StopEvent() = default;

void StopEvent::signal() {
    ::SetEvent(state_->event.get());
}

// The system sets the event `change` when something has come, when something can be sent again, and
// when the other side is gone, each once until it is asked for. So changes are forgotten first,
// then the socket is tried, and only then they are waited for: none gets lost.
struct ConnectionSocket::State {
    State(SOCKET connected, HANDLE stopEvent)
        : socket(connected),
          stop(stopEvent),
          change(::CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
        ::WSAEventSelect(socket, change.get(), FD_READ | FD_WRITE | FD_CLOSE);
    }
    ~State() { ::closesocket(socket); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void forgetChanges() const {
        WSANETWORKEVENTS forgotten{};
        ::WSAEnumNetworkEvents(socket, change.get(), &forgotten);
    }

    bool isStopped() const { return ::WaitForSingleObject(stop, 0) == WAIT_OBJECT_0; }

    SOCKET socket;
    HANDLE stop;
    Handle change;
};

ConnectionSocket::ConnectionSocket(SocketHandle socket, const StopEvent& stop)
    : state_(std::make_unique<State>(static_cast<SOCKET>(socket), stop.state_->event.get())) {
    ::SetHandleInformation(reinterpret_cast<HANDLE>(state_->socket), HANDLE_FLAG_INHERIT, 0);
    const BOOL on = TRUE;
    ::setsockopt(state_->socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on),
                 sizeof on);
}

ConnectionSocket::~ConnectionSocket() = default;

SocketHandle ConnectionSocket::handle() const {
    return static_cast<SocketHandle>(state_->socket);
}

std::size_t ConnectionSocket::receive(std::span<char> buffer, Clock::time_point deadline) {
    const std::array<HANDLE, 2> waiting{state_->change.get(), state_->stop};
    while (!state_->isStopped() && Clock::now() < deadline) {
        state_->forgetChanges();
        const int count = ::recv(state_->socket, buffer.data(), pieceOf(buffer.size()), 0);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (::WSAGetLastError() != WSAEWOULDBLOCK) return 0;
        ::WaitForMultipleObjects(static_cast<DWORD>(waiting.size()), waiting.data(), FALSE,
                                 millisecondsUntil(deadline));
    }
    return 0;
}

bool ConnectionSocket::send(std::string_view bytes, const Patience& patience) {
    const std::array<HANDLE, 2> waiting{state_->change.get(), state_->stop};
    bool stopped = false;
    Clock::time_point end = Clock::now() + patience.usual;
    while (!bytes.empty()) {
        state_->forgetChanges();
        const int count = ::send(state_->socket, bytes.data(), pieceOf(bytes.size()), 0);
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
            end = Clock::now() + (stopped ? patience.afterStop : patience.usual);
            continue;
        }
        if (::WSAGetLastError() != WSAEWOULDBLOCK) return false;
        const DWORD wait = ::WaitForMultipleObjects(stopped ? 1 : 2, waiting.data(), FALSE,
                                                    millisecondsUntil(end));
        if (wait == WAIT_OBJECT_0 + 1) {
            stopped = true;
            end = std::min(end, Clock::now() + patience.afterStop);
        } else if (wait != WAIT_OBJECT_0) {
            return false;
        }
    }
    return true;
}

void ConnectionSocket::endSending() {
    ::shutdown(state_->socket, SD_SEND);
}

}  // namespace tandril::platform
