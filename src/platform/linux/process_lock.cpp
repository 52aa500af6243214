#include "platform/process_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "platform/fault.h"
#include "platform/linux/descriptor.h"

namespace tandril::platform {
namespace {

[[noreturn]] void fail(const std::string& what, int error) {
    throw Fault(what + ": " + std::generic_category().message(error));
}

std::string firstLine(int file) {
    std::array<char, 32> text{};
    const ssize_t count = ::pread(file, text.data(), text.size(), 0);
    const std::string start(text.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    return start.substr(0, start.find('\n'));
}

bool writeProcessId(int file) {
    const std::string text = std::to_string(::getpid()) + "\n";
    return ::ftruncate(file, 0) == 0 &&
           ::pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
}

}  // namespace

struct ProcessLock::State {
    Descriptor file;
    bool isHeld = false;
};

ProcessLock::ProcessLock(const std::string& path)
    : state_(std::make_unique<State>(State{
          Descriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600))})) {
    const int file = state_->file.get();
    if (file < 0) fail("cannot create " + path, errno);
    state_->isHeld = ::flock(file, LOCK_EX | LOCK_NB) == 0;
    if (!state_->isHeld && errno != EWOULDBLOCK) fail("cannot lock " + path, errno);
    if (!state_->isHeld) {
        holder_ = firstLine(file);
    } else if (!writeProcessId(file)) {
        fail("cannot write " + path, errno);
    }
}

ProcessLock::~ProcessLock() {
    // Should that fail, the lock is gone all the same.
    if (state_->isHeld) static_cast<void>(::ftruncate(state_->file.get(), 0) == 0);
}

bool ProcessLock::isHeld() const {
    return state_->isHeld;
}

}  // namespace tandril::platform
