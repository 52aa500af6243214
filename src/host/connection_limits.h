#pragma once

#include <chrono>
#include <cstddef>

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

}  // namespace tandril::host
