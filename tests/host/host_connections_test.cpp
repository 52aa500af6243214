#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <list>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "host/request_rules.h"
#include "host/running_host.h"
#include "platform/fault.h"

// How the host treats connections: slow, broken, hung and hostile ones.
namespace tandril::test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using Clock = std::chrono::steady_clock;

// A test that waits for one of these would take ten minutes; one that does not, far less than
// soon, also on a machine that has much else to do.
host::HostSettings longDeadlines() {
    host::HostSettings settings;
    settings.connections.head = 600s;
    settings.connections.body = 600s;
    settings.connections.write = 600s;
    settings.connections.linger = 500ms;
    return settings;
}

constexpr auto soon = 60s;

// The other deadline stays long, because a busy machine may need as much for what is sent at once.
host::HostSettings shortHead() {
    host::HostSettings settings = longDeadlines();
    settings.connections.head = 300ms;
    return settings;
}

host::HostSettings shortBody() {
    host::HostSettings settings = longDeadlines();
    settings.connections.body = 300ms;
    return settings;
}

TEST(HostConnections, HungClientsKeepNobodyWaiting) {
    RunningHost host(longDeadlines());
    host.csrf();
    std::list<RawConnection> hung;
    for (int i = 0; i < 100; ++i) {
        hung.emplace_back(host.port()).send(i % 2 == 0 ? "GET / HT" : "");
    }
    const auto start = Clock::now();
    EXPECT_EQ(host.post("/client20/LocalXmlExists", "[]").status(), 200);
    EXPECT_LT(Clock::now() - start, soon);
}

TEST(HostConnections, HungBodiesKeepNoCallWaiting) {
    RunningHost host(longDeadlines());
    const std::string head = host.postHead("/client20/LocalXmlExists");
    std::list<RawConnection> hung;
    for (int i = 0; i < 20; ++i) {
        hung.emplace_back(host.port()).send(head + "Content-Length: 2\r\n\r\n[");
    }
    const auto start = Clock::now();
    EXPECT_EQ(host.post("/client20/LocalXmlExists", "[]").status(), 200);
    EXPECT_LT(Clock::now() - start, soon);
}

TEST(HostConnections, HeadThatDripsInIsCutOff) {
    RunningHost host(shortHead());
    const auto start = Clock::now();
    const RawConnection connection(host.port());
    connection.send("GET / HTTP/1.1\r\n");
    std::thread dripping([&connection] {
        for (int i = 0; i < 100 && connection.send("X"); ++i) {
            std::this_thread::sleep_for(20ms);
        }
    });
    const RawResponse response(connection.readAll());
    EXPECT_EQ(response.status(), 400);
    EXPECT_GT(Clock::now() - start, 200ms);
    EXPECT_LT(Clock::now() - start, soon);
    dripping.join();
}

TEST(HostConnections, BodyThatDoesNotArriveIsCutOff) {
    RunningHost host(shortBody());
    const RawConnection connection(host.port());
    connection.send(host.postHead("/client20/LocalXmlExists") + "Content-Length: 3\r\n\r\n[");
    const RawResponse response(connection.readAll());
    EXPECT_EQ(response.status(), 400);
    EXPECT_EQ(response.body, "the body did not arrive\n");
}

TEST(HostConnections, BodyThatEndsEarlyIsNoCall) {
    RunningHost host;
    const RawConnection connection(host.port());
    connection.send(host.postHead("/client20/Initialize") + "Content-Length: 3\r\n\r\n[]");
    connection.endSending();
    EXPECT_EQ(RawResponse(connection.readAll()).status(), 400);
    EXPECT_FALSE(host.home().exists("Vorn Tandril"));
}

TEST(HostConnections, SilentConnectionIsClosedWithoutAWord) {
    RunningHost host(shortHead());
    EXPECT_EQ(RawConnection(host.port()).readAll(), "");
}

TEST(HostConnections, EndlessHeadIsCutOff) {
    RunningHost host;
    const RawConnection connection(host.port());
    connection.send("GET / HTTP/1.1\r\n");
    for (int i = 0; i < 100; ++i) {
        connection.send("X-Filler-" + std::to_string(i) + ": " + std::string(1000, 'x') + "\r\n");
    }
    EXPECT_EQ(RawResponse(connection.readAll()).status(), 400);
}

// The body of a refused request could otherwise speak for its sender, with headers of its choice.
TEST(HostConnections, SecondRequestOnAConnectionIsNotRead) {
    RunningHost host;
    const std::string second = "GET /session HTTP/1.1\r\nHost: " + host::authority(host.port()) +
                               "\r\nCookie: " + host.cookie() + "\r\n\r\n";
    const RawResponse refused =
        exchange(host.port(), "POST /x HTTP/1.1\r\nHost: evil.example\r\nContent-Length: " +
                                  std::to_string(second.size()) + "\r\n\r\n" + second);
    EXPECT_EQ(refused.status(), 421);
    EXPECT_EQ(refused.body.find("HTTP/1.1"), std::string::npos);
    const RawResponse answered = exchange(host.port(), second + second);
    EXPECT_EQ(answered.status(), 200);
    EXPECT_EQ(answered.body.find("HTTP/1.1"), std::string::npos);
}

TEST(HostConnections, AnswersAreNeitherCutNorCompressed) {
    RunningHost host;
    host.page().write("long.txt", std::string(100'000, 'x'));
    const RawResponse response =
        host.get("/long.txt", "Range: bytes=0-9\r\nAccept-Encoding: gzip, br\r\n");
    EXPECT_EQ(response.status(), 200);
    EXPECT_EQ(response.body.size(), 100'000U);
    EXPECT_EQ(response.header("Content-Encoding"), "(none)");
}

TEST(HostConnections, LongAnswersArriveWhole) {
    RunningHost host;
    const std::string content(20'000'000, 'y');
    host.page().write("long.txt", content);
    EXPECT_EQ(host.get("/long.txt").body, content);
}

TEST(HostConnections, ManyCallsAtATimeAreAllAnswered) {
    RunningHost host;
    const std::string request =
        host.postHead("/client20/LocalXmlExists") + "Content-Length: 2\r\n\r\n[]";
    std::vector<RawResponse> responses(30);
    std::vector<std::thread> threads;
    for (RawResponse& response : responses) {
        threads.emplace_back([&] { response = exchange(host.port(), request); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const RawResponse& response : responses) {
        EXPECT_EQ(response.body, "{\"result\":false}\n");
    }
}

TEST(HostConnections, StopDoesNotWaitForHungClients) {
    RunningHost host(longDeadlines());
    const RawConnection silent(host.port());
    const RawConnection half(host.port());
    half.send("GET / HTTP/1.1\r\n");
    EXPECT_EQ(host.get("/").status(), 200);
    const auto start = Clock::now();
    host.stop();
    EXPECT_LT(Clock::now() - start, soon);
    EXPECT_THROW(const RawConnection gone(host.port()), std::runtime_error);
}

TEST(HostConnections, StopDoesNotWaitForClientsThatDoNotRead) {
    RunningHost host(longDeadlines());
    host.page().write("long.txt", std::string(20'000'000, 'x'));
    const RawConnection deaf(host.port());
    deaf.send("GET /long.txt HTTP/1.1\r\nHost: " + host::authority(host.port()) +
              "\r\nCookie: " + host.cookie() + "\r\n\r\n");
    std::this_thread::sleep_for(200ms);  // until the answer fills the socket
    const auto start = Clock::now();
    host.stop();
    EXPECT_LT(Clock::now() - start, soon);
}

TEST(HostConnections, StoppedAtOnceAfterTheStart) {
    for (int i = 0; i < 20; ++i) {
        RunningHost host;
        host.stop();
    }
}

TEST(HostConnections, NoTwoHostsShareAPort) {
    RunningHost host;
    try {
        const host::HttpServer second(host.port());
        FAIL() << "a second server listens on the same port";
    } catch (const Fault& fault) {
        EXPECT_EQ(std::string(fault.what()), "cannot listen on port " +
                                                 std::to_string(host.port()) +
                                                 " of 127.0.0.1; is it in use?");
    }
}

TEST(HostConnections, UnsaidPortIsTheFirstFreeOne) {
    const host::HttpServer first(std::nullopt);
    const host::HttpServer second(std::nullopt);
    for (const int port : {first.port(), second.port()}) {
        EXPECT_GE(port, 8720);
        EXPECT_LT(port, 8820);
    }
    // Another program may give its port back between the two.
    EXPECT_NE(second.port(), first.port());
}

}  // namespace
}  // namespace tandril::test
