#include "host/connection_threads.h"

#include <system_error>
#include <thread>
#include <utility>

namespace tandril::host {
namespace {

constexpr std::size_t mostThreads = 512;

}  // namespace

void ConnectionThreads::enqueue(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    if (threads_ < mostThreads) {
        try {
            std::thread([this, work] { run(work); }).detach();
            ++threads_;
            return;
        } catch (const std::system_error&) {
            // The system has no more threads; one of those at work goes on with this connection.
        }
    }
    waiting_.push_back(std::move(work));
}

void ConnectionThreads::shutdown() {
    std::unique_lock lock(mutex_);
    allDone_.wait(lock, [this] { return threads_ == 0; });
}

void ConnectionThreads::run(std::function<void()> work) {
    while (true) {
        work();
        const std::lock_guard lock(mutex_);
        if (waiting_.empty()) {
            --threads_;
            // Under the lock: after it this object may be gone.
            allDone_.notify_all();
            return;
        }
        work = std::move(waiting_.front());
        waiting_.pop_front();
    }
}

}  // namespace tandril::host
