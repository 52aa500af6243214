#pragma once

#include <string>

namespace tandril::host {

// Holds a home for one host, by a lock on the file "host.lock" in it. The system takes the lock
// back when the process ends, however it ends; the file stays.
class HomeLock {
  public:
    // Throws Fault when another process holds the home (the text names its process id), when there
    // is no such home, or when the file cannot be made.
    explicit HomeLock(const std::string& home);
    ~HomeLock();
    HomeLock(const HomeLock&) = delete;
    HomeLock& operator=(const HomeLock&) = delete;

  private:
    int file_ = -1;
};

}  // namespace tandril::host
