#include "host/home_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/fault.h"

namespace tandril::host {
namespace {

std::string holder(int file) {
    std::array<char, 32> text{};
    const ssize_t count = ::pread(file, text.data(), text.size(), 0);
    const std::string id(text.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    const std::string digits = id.substr(0, id.find('\n'));
    return digits.empty() ? "another process" : "process " + digits;
}

// The process id is for people: it tells a second host whom to ask.
bool writeHolder(int file) {
    const std::string text = std::to_string(::getpid()) + "\n";
    return ::ftruncate(file, 0) == 0 &&
           ::pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
}

[[noreturn]] void fail(const std::string& what, int error) {
    throw Fault(what + ": " + std::generic_category().message(error));
}

}  // namespace

HomeLock::HomeLock(const std::string& home) {
    if (!std::filesystem::is_directory(home)) {
        throw Fault("there is no home folder " + home);
    }
    const std::string path = home + "/host.lock";
    file_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file_ < 0) {
        fail("cannot create " + path, errno);
    }
    if (::flock(file_, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        const std::string who = holder(file_);
        ::close(file_);
        if (error == EWOULDBLOCK) {
            throw Fault("the home " + home + " is already served by " + who);
        }
        fail("cannot lock " + path, error);
    }
    if (!writeHolder(file_)) {
        const int error = errno;
        ::close(file_);
        fail("cannot write " + path, error);
    }
}

HomeLock::~HomeLock() {
    // An empty file belongs to nobody. Should that fail, the lock is gone all the same.
    static_cast<void>(::ftruncate(file_, 0) == 0);
    ::close(file_);
}

}  // namespace tandril::host
