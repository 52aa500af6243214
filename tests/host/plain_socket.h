#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tandril::test {

// A TCP socket of 127.0.0.1 as the system has it, without any manners of its own. Every function
// that cannot do what it says throws, unless it says otherwise.
class PlainSocket {
  public:
    static PlainSocket connectedTo(int port);
    // On any free port.
    static PlainSocket listening();
    ~PlainSocket();
    PlainSocket(PlainSocket&& other) noexcept;
    PlainSocket(const PlainSocket&) = delete;
    PlainSocket& operator=(const PlainSocket&) = delete;
    PlainSocket& operator=(PlainSocket&&) = delete;

    int port() const;

    // Waits for a connection.
    PlainSocket accept() const;

    // Returns false when the other side takes no more.
    bool send(std::string_view bytes) const;
    void endSending() const;

    enum class State { Open, Ended, Reset };
    struct Received {
        State state = State::Open;
        std::size_t size = 0;  // none: the time is over
    };
    // What comes next, within that time or within any.
    Received receive(std::span<char> buffer,
                     std::optional<std::chrono::milliseconds> time = std::nullopt) const;

  private:
    explicit PlainSocket(std::intptr_t handle) : handle_(handle) {}

    std::intptr_t handle_;
};

}  // namespace tandril::test
