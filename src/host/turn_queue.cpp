#include "host/turn_queue.h"

namespace tandril::host {

// One piece of work; lives on the stack of the thread that waits for it.
struct TurnQueue::Turn {
    enum class State { Waiting, Done, Dropped };

    const std::function<void()>& work;
    State state = State::Waiting;
    std::condition_variable over{};
};

TurnQueue::TurnQueue() : thread_([this] { runTurns(); }) {}

TurnQueue::~TurnQueue() {
    stop();
    thread_.join();
}

bool TurnQueue::run(const std::function<void()>& work) {
    std::unique_lock lock(mutex_);
    if (stopped_) {
        return false;
    }
    Turn turn{work};
    waiting_.push_back(&turn);
    changed_.notify_one();
    turn.over.wait(lock, [&turn] { return turn.state != Turn::State::Waiting; });
    return turn.state == Turn::State::Done;
}

void TurnQueue::stop() {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    changed_.notify_one();
    for (Turn* turn : waiting_) {
        turn->state = Turn::State::Dropped;
        turn->over.notify_one();
    }
    waiting_.clear();
}

void TurnQueue::runTurns() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return stopped_ || !waiting_.empty(); });
        if (stopped_) {
            return;
        }
        Turn* turn = waiting_.front();
        waiting_.pop_front();
        lock.unlock();
        turn->work();
        lock.lock();
        turn->state = Turn::State::Done;
        // Under the lock: the turn is gone as soon as its thread goes on.
        turn->over.notify_one();
    }
}

}  // namespace tandril::host
