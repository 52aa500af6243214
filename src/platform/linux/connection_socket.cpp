#include "platform/connection_socket.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "platform/fault.h"
#include "platform/linux/descriptor.h"

namespace tandril::platform {
namespace {

bool mayPass(int error) {
    return error == EAGAIN || error == EINTR;
}

}  // namespace

struct StopEvent::State {
    Descriptor event{::eventfd(0, EFD_CLOEXEC)};
};

StopEvent::StopEvent() : state_(std::make_unique<State>()) {
    if (!state_->event.valid()) throw Fault("the system has no event for the connections");
}

StopEvent::~StopEvent() = default;

void StopEvent::signal() {
    ::eventfd_write(state_->event.get(), 1);
}

struct ConnectionSocket::State {
    Descriptor socket;
    int stop;

    bool waitToRead(Clock::time_point deadline) const {
        std::array<pollfd, 2> waiting{{{socket.get(), POLLIN, 0}, {stop, POLLIN, 0}}};
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return false;
        const int ready = ::poll(waiting.data(), waiting.size(), static_cast<int>(left));
        return ready > 0 && waiting[1].revents == 0;
    }

    bool waitToWrite(const Patience& patience) const {
        std::array<pollfd, 2> waiting{{{socket.get(), POLLOUT, 0}, {stop, POLLIN, 0}}};
        if (::poll(waiting.data(), waiting.size(), static_cast<int>(patience.usual.count())) <= 0) {
            return false;
        }
        return waiting[0].revents != 0 ||
               ::poll(waiting.data(), 1, static_cast<int>(patience.afterStop.count())) > 0;
    }
};

ConnectionSocket::ConnectionSocket(SocketHandle socket, const StopEvent& stop)
    : state_(std::make_unique<State>(
          State{Descriptor(static_cast<int>(socket)), stop.state_->event.get()})) {
    ::fcntl(state_->socket.get(), F_SETFD, FD_CLOEXEC);
    const int on = 1;
    ::setsockopt(state_->socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

ConnectionSocket::~ConnectionSocket() = default;

SocketHandle ConnectionSocket::handle() const {
    return state_->socket.get();
}

std::size_t ConnectionSocket::receive(std::span<char> buffer, Clock::time_point deadline) {
    while (state_->waitToRead(deadline)) {
        const ssize_t count =
            ::recv(state_->socket.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (!mayPass(errno)) return 0;
    }
    return 0;
}

bool ConnectionSocket::send(std::string_view bytes, const Patience& patience) {
    while (!bytes.empty()) {
        if (!state_->waitToWrite(patience)) return false;
        const ssize_t count =
            ::send(state_->socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && !mayPass(errno)) return false;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

void ConnectionSocket::endSending() {
    ::shutdown(state_->socket.get(), SHUT_WR);
}

}  // namespace tandril::platform
