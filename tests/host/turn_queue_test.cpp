#include "host/turn_queue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <string>
#include <thread>
#include <vector>

namespace tandril::host {
namespace {

using namespace std::chrono_literals;

// Work that runs until it is told to end.
class Gate {
  public:
    void pass() {
        entered_.set_value();
        open_.get_future().wait();
    }
    void waitUntilEntered() { entered_.get_future().wait(); }
    void open() { open_.set_value(); }

  private:
    std::promise<void> entered_;
    std::promise<void> open_;
};

TEST(TurnQueue, RunsTheWorkAndComesBackAfterIt) {
    TurnQueue turns;
    int runs = 0;
    EXPECT_TRUE(turns.run([&] { ++runs; }));
    EXPECT_TRUE(turns.run([&] { ++runs; }));
    EXPECT_EQ(runs, 2);
}

TEST(TurnQueue, RunsAllWorkOnOneThread) {
    TurnQueue turns;
    std::vector<std::thread::id> threads;
    const auto note = [&] { threads.push_back(std::this_thread::get_id()); };
    turns.run(note);
    std::thread([&] { turns.run(note); }).join();
    ASSERT_EQ(threads.size(), 2U);
    EXPECT_EQ(threads[0], threads[1]);
    EXPECT_NE(threads[0], std::this_thread::get_id());
}

// The order in which pieces of work run that come `pause` apart.
std::vector<int> orderOfWorkThatComes(std::chrono::milliseconds pause) {
    TurnQueue turns;
    Gate gate;
    std::vector<int> order;
    std::vector<std::thread> threads;
    threads.emplace_back([&] { turns.run([&] { gate.pass(); }); });
    gate.waitUntilEntered();
    for (int i = 1; i <= 5; ++i) {
        threads.emplace_back([&, i] { turns.run([&, i] { order.push_back(i); }); });
        std::this_thread::sleep_for(pause);
    }
    gate.open();
    for (std::thread& thread : threads) {
        thread.join();
    }
    return order;
}

// On a busy machine a thread may come later than the next one, unless the pause is long.
TEST(TurnQueue, TakesTurnsInOrderOfArrival) {
    const std::vector<int> arrived{1, 2, 3, 4, 5};
    std::vector<int> order;
    for (auto pause = 20ms; order != arrived && pause < 5s; pause *= 5) {
        order = orderOfWorkThatComes(pause);
    }
    EXPECT_EQ(order, arrived);
}

TEST(TurnQueue, NeverRunsTwoAtATime) {
    TurnQueue turns;
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int k = 0; k < 50; ++k) {
                turns.run([&] {
                    most = std::max(most.load(), ++running);
                    std::this_thread::yield();
                    --running;
                });
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(most, 1);
}

TEST(TurnQueue, StopLetsTheRunningWorkEndAndDropsTheRest) {
    TurnQueue turns;
    Gate gate;
    bool ranWaiting = false;
    std::future<bool> running =
        std::async(std::launch::async, [&] { return turns.run([&] { gate.pass(); }); });
    gate.waitUntilEntered();
    std::future<bool> waiting =
        std::async(std::launch::async, [&] { return turns.run([&] { ranWaiting = true; }); });
    EXPECT_EQ(waiting.wait_for(20ms), std::future_status::timeout);

    turns.stop();
    EXPECT_FALSE(waiting.get());
    EXPECT_FALSE(ranWaiting);
    EXPECT_EQ(running.wait_for(20ms), std::future_status::timeout);

    gate.open();
    EXPECT_TRUE(running.get());
}

TEST(TurnQueue, RunsNothingAfterStop) {
    TurnQueue turns;
    turns.stop();
    turns.stop();
    EXPECT_FALSE(turns.run([] { FAIL(); }));
}

}  // namespace
}  // namespace tandril::host
