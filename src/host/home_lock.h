#pragma once

#include <string>

#include "platform/process_lock.h"

namespace tandril::host {

// Holds a home for one host, by a lock on the file "host.lock" in it; for the machine itself ("")
// in the install folder. The system takes the lock back when the process ends, however it ends; the
// file stays.
class HomeLock {
  public:
    // Throws Fault when another process holds the home (the text names its process id), when there
    // is no such home, or when the file cannot be made.
    explicit HomeLock(const std::string& home);

  private:
    platform::ProcessLock lock_;
};

}  // namespace tandril::host
