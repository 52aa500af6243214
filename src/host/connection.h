#pragma once

#include <httplib.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <string>

namespace tandril::host {

// How long a connection may keep the host waiting, and how much it may send before its request is
// known.
struct ConnectionLimits {
    std::chrono::milliseconds head = std::chrono::seconds(10);   // from the start to the blank line
    std::chrono::milliseconds body = std::chrono::seconds(60);   // from there to the body's end
    std::chrono::milliseconds write = std::chrono::seconds(30);  // for each piece of the answer
    std::chrono::milliseconds linger = std::chrono::seconds(2);  // for the client to read it
    std::size_t headBytes = std::size_t{64} * 1024;
};

// A client's socket as the HTTP library reads and writes it, with deadlines: the library's own
// timeouts start anew with every byte. Closes the socket when destroyed.
class Connection : public httplib::Stream {
  public:
    // Reading ends when the event `stop` is signalled.
    Connection(int socket, int stop, const ConnectionLimits& limits);
    ~Connection() override;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // The head has been read; from now on the limits of the body hold.
    void beginBody();

    // Tells the client that the answer is over and takes in what it still sends: closing a socket
    // with unread data would destroy the answer on its way.
    void linger();

    bool is_readable() const override { return true; }
    bool is_writable() const override { return true; }
    ssize_t read(char* data, std::size_t size) override;
    ssize_t write(const char* data, std::size_t size) override;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    socket_t socket() const override { return socket_; }

  private:
    using Clock = std::chrono::steady_clock;

    bool waitToRead(Clock::time_point deadline) const;
    bool waitToWrite() const;
    bool fill();

    int socket_;
    int stop_;
    ConnectionLimits limits_;
    Clock::time_point deadline_;
    bool inHead_ = true;
    std::size_t headBytes_ = 0;
    std::array<char, 16384> buffer_{};
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

}  // namespace tandril::host
