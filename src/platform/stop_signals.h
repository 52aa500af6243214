#pragma once

#include <memory>

namespace tandril::platform {

// That the user or the system asks the program to end, as something to wait for: Ctrl-C and, by the
// system, SIGTERM, or the end of the console or of the session. There is one such object at a time.
// Make it before any other thread: threads that started earlier would take the signals the usual
// way, which ends the process.
class StopSignals {
  public:
    StopSignals();
    // The signals work the usual way again. A system that ends the program when it has been asked
    // waits until then, for as long as its patience lasts.
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    // Waits for the first one. Another one ends the process at once.
    void wait();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace tandril::platform
