#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace tandril::host {

// Runs pieces of work one at a time, in the order in which they come, on one thread of its own:
// the client and what it holds belong to one thread. Safe for concurrent use.
class TurnQueue {
  public:
    TurnQueue();
    // Stops.
    ~TurnQueue();
    TurnQueue(const TurnQueue&) = delete;
    TurnQueue& operator=(const TurnQueue&) = delete;

    // Waits for the turn of `work`, runs it and returns true. Returns false, without having run it,
    // when the queue is stopped. `work` must not throw.
    bool run(const std::function<void()>& work);

    // Lets the running work end and runs nothing any more.
    void stop();

  private:
    struct Turn;
    void runTurns();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Turn*> waiting_;
    bool stopped_ = false;
    std::thread thread_;
};

}  // namespace tandril::host
