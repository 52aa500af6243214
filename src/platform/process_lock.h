#pragma once

#include <memory>
#include <string>

namespace tandril::platform {

// A file that one process at a time holds, with its process id in it. The system takes the lock
// back when the process ends, however it ends; the file stays, and is empty when nobody holds it.
class ProcessLock {
  public:
    // Makes the file when it is missing, and takes the lock when it is free. Throws Fault when the
    // file cannot be made, locked or written.
    explicit ProcessLock(const std::string& path);
    ~ProcessLock();
    ProcessLock(const ProcessLock&) = delete;
    ProcessLock& operator=(const ProcessLock&) = delete;

    bool isHeld() const;

    // When it is not: what the file says about the one who holds it.
    const std::string& holder() const { return holder_; }

  private:
    struct State;
    std::unique_ptr<State> state_;
    std::string holder_;
};

}  // namespace tandril::platform
