#pragma once

#include <unistd.h>

#include <string_view>
#include <utility>

#include "platform/linux/posix_file.h"

namespace tandril::platform {

// An open file descriptor, closed when destroyed.
class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;

    bool valid() const { return fd_ >= 0; }
    int get() const { return fd_; }

  private:
    int fd_;
};

// What is done to which file, for the message of the fault when a step of it fails.
struct Attempt {
    std::string_view what;
    std::string_view shown;
    [[noreturn]] void fail(int error) const { throwSystemFault(what, shown, error); }
};

// Writes all bytes. Returns 0, or the error that ended the writing.
int writeAll(int fd, std::string_view bytes);

}  // namespace tandril::platform
