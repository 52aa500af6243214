#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace tandril::platform {

// A socket by the number that the system gives it.
using SocketHandle = std::intptr_t;

// Ends what connections wait for, once and for all. Safe for concurrent use.
class StopEvent {
  public:
    // Throws Fault when the system has none.
    StopEvent();
    ~StopEvent();
    StopEvent(const StopEvent&) = delete;
    StopEvent& operator=(const StopEvent&) = delete;

    void signal();

  private:
    friend class ConnectionSocket;
    struct State;
    std::unique_ptr<State> state_;
};

// How long the other side of a connection may take nothing before it is given up.
struct Patience {
    std::chrono::milliseconds usual;
    std::chrono::milliseconds afterStop;
};

// A connected TCP socket of a server. Programs that this one starts do not inherit it.
class ConnectionSocket {
  public:
    using Clock = std::chrono::steady_clock;

    // Takes the socket over and closes it when destroyed. `stop` must outlive this object.
    ConnectionSocket(SocketHandle socket, const StopEvent& stop);
    ~ConnectionSocket();
    ConnectionSocket(const ConnectionSocket&) = delete;
    ConnectionSocket& operator=(const ConnectionSocket&) = delete;

    SocketHandle handle() const;

    // Waits until something comes and takes it in. Returns the number of bytes; 0 when the other
    // side sends no more, when the deadline passes and when the event says stop.
    std::size_t receive(std::span<char> buffer, Clock::time_point deadline);

    // Sends everything. Returns false when the other side is gone, or runs out of patience with it.
    bool send(std::string_view bytes, const Patience& patience);

    // Tells the other side that nothing more comes.
    void endSending();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace tandril::platform
