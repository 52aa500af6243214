#pragma once

#include <csignal>

namespace tandril::host {

// Ctrl-C and SIGTERM as something to wait for. Make it before any other thread: threads that
// started earlier would take the signals the usual way, which ends the process.
class StopSignals {
  public:
    StopSignals();
    // The signals work the usual way again.
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    // Waits for the first one. Another one ends the process at once.
    void wait();

  private:
    sigset_t signals_{};
    sigset_t before_{};
};

}  // namespace tandril::host
