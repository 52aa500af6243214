#pragma once

#include <httplib.h>

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>

namespace tandril::host {

// A thread for each connection, so that one that hangs keeps no other waiting. Above a number that
// no browser reaches connections wait for one another.
class ConnectionThreads : public httplib::TaskQueue {
  public:
    void enqueue(std::function<void()> work) override;
    // Waits until all connections are done.
    void shutdown() override;

  private:
    void run(std::function<void()> work);

    std::mutex mutex_;
    std::condition_variable allDone_;
    std::deque<std::function<void()>> waiting_;
    std::size_t threads_ = 0;
};

}  // namespace tandril::host
