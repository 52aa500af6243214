#include "host/relay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <string>
#include <thread>

#include "host/plain_socket.h"
#include "host/running_host.h"
#include "host/scripted_server.h"

namespace tandril::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;

const std::string hello =
    "HTTP/1.1 200 OK\r\nContent-Type: application/xml\r\nContent-Length: 4\r\n\r\n<a/>";

host::HostSettings relayingTo(const std::string& url) {
    host::HostSettings settings;
    settings.enterpriseUrl = url;
    return settings;
}

TEST(Relay, PassesPathAndQueryOnAsTheyCame) {
    const ScriptedServer server(hello);
    RunningHost host(relayingTo(server.url() + "/base/"));
    const RawResponse response = host.get("/enterprise/a%20b/c?of=A%201&x=1+2&y=%C3%A4,'z'");
    EXPECT_EQ(response.status(), 200);
    EXPECT_EQ(response.body, "<a/>");
    ASSERT_THAT(server.requests(), SizeIs(1));
    EXPECT_THAT(server.requests()[0],
                StartsWith("GET /base/a%20b/c?of=A%201&x=1+2&y=%C3%A4,'z' HTTP/1.1\r\n"));
}

TEST(Relay, PassesABodyOn) {
    const ScriptedServer server(hello);
    RunningHost host(relayingTo(server.url()));
    const std::string body("<a>\0\xFF</a>", 9);
    EXPECT_EQ(host.post("/enterprise/upload", body).status(), 200);
    ASSERT_THAT(server.requests(), SizeIs(1));
    EXPECT_THAT(server.requests()[0], StartsWith("POST /upload HTTP/1.1\r\n"));
    EXPECT_THAT(server.requests()[0], HasSubstr("\r\n\r\n" + body));
}

TEST(Relay, KeepsWhatIsNotAboutTheRequest) {
    const ScriptedServer server(hello);
    RunningHost host(relayingTo(server.url()));
    host.post("/enterprise/x", "[]",
              "Accept: text/xml\r\nAccept-Language: de\r\nReferer: http://x/\r\n"
              "Authorization: Basic eDp5\r\nX-Forwarded-For: 1.2.3.4\r\n");
    ASSERT_THAT(server.requests(), SizeIs(1));
    const std::string request = server.requests()[0];
    EXPECT_THAT(request, HasSubstr("\r\nAccept: text/xml\r\n"));
    EXPECT_THAT(request, HasSubstr("\r\nAccept-Language: de\r\n"));
    EXPECT_THAT(request, HasSubstr("\r\nContent-Type: application/json\r\n"));
    EXPECT_THAT(request, HasSubstr("\r\nHost: " + server.authority() + "\r\n"));
    for (const char* name : {"Cookie", "X-Tandril-Csrf", "Origin", "Referer", "Authorization",
                             "X-Forwarded-For", "REMOTE"}) {
        EXPECT_THAT(request, Not(HasSubstr(name)));
    }
}

TEST(Relay, PassesBackWhatTheAnswerIs) {
    const ScriptedServer server(
        "HTTP/1.1 404 Not Found\r\nContent-Type: text/html; charset=latin1\r\n"
        "Content-Language: de\r\nContent-Disposition: attachment\r\nETag: \"1\"\r\n"
        "Last-Modified: Sun, 15 Nov 2026 11:59:39 GMT\r\nSet-Cookie: a=1\r\nX-Other: 1\r\n"
        "Cache-Control: max-age=1\r\nContent-Security-Policy: default-src *\r\n"
        "Access-Control-Allow-Origin: *\r\nContent-Length: 4\r\n\r\ngone");
    RunningHost host(relayingTo(server.url()));
    const RawResponse response = host.get("/enterprise/x");
    EXPECT_EQ(response.status(), 404);
    EXPECT_EQ(response.body, "gone");
    EXPECT_EQ(response.header("Content-Type"), "text/html; charset=latin1");
    EXPECT_EQ(response.header("Content-Language"), "de");
    EXPECT_EQ(response.header("Content-Disposition"), "attachment");
    EXPECT_EQ(response.header("ETag"), "\"1\"");
    EXPECT_EQ(response.header("Last-Modified"), "Sun, 15 Nov 2026 11:59:39 GMT");
    for (const char* name : {"Set-Cookie", "X-Other", "Access-Control-Allow-Origin"}) {
        EXPECT_EQ(response.header(name), "(none)") << name;
    }
    EXPECT_EQ(response.header("Cache-Control"), "no-store");
    EXPECT_THAT(response.head, Not(HasSubstr("default-src *")));
}

TEST(Relay, PassesAnEmptyAnswerBack) {
    const ScriptedServer server("HTTP/1.1 204 No Content\r\n\r\n");
    RunningHost host(relayingTo(server.url()));
    const RawResponse response = host.get("/enterprise/x");
    EXPECT_EQ(response.status(), 204);
    EXPECT_EQ(response.body, "");
}

TEST(Relay, WithoutServer) {
    RunningHost host;
    const RawResponse response = host.get("/enterprise/x");
    EXPECT_EQ(response.status(), 503);
    EXPECT_EQ(response.body, "there is no enterprise server; --enterprise names one\n");
}

TEST(Relay, ServerThatIsNotThere) {
    std::string url;
    {
        const ScriptedServer gone(hello);
        url = gone.url();
    }
    RunningHost host(relayingTo(url));
    const RawResponse response = host.get("/enterprise/x");
    EXPECT_EQ(response.status(), 502);
    EXPECT_EQ(response.body, "the enterprise server cannot be reached\n");
}

TEST(Relay, ServerThatDoesNotSpeakHttps) {
    const PlainSocket listener = PlainSocket::listening();
    std::thread server([&listener] {
        listener.accept().send("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\n\r\n");
    });
    RunningHost host(relayingTo("https://127.0.0.1:" + std::to_string(listener.port())));
    const RawResponse response = host.get("/enterprise/x");
    server.join();
    EXPECT_EQ(response.status(), 502);
    EXPECT_EQ(response.body, "the enterprise server makes no secure connection\n");
}

TEST(Relay, RedirectIsNotFollowed) {
    const ScriptedServer other(hello);
    const ScriptedServer server("HTTP/1.1 302 Found\r\nLocation: " + other.url() +
                                "/x\r\nContent-Length: 0\r\n\r\n");
    RunningHost host(relayingTo(server.url()));
    const RawResponse response = host.get("/enterprise/x");
    EXPECT_EQ(response.status(), 502);
    EXPECT_EQ(response.body, "the enterprise server redirects\n");
    EXPECT_EQ(response.header("Location"), "(none)");
    EXPECT_THAT(other.requests(), SizeIs(0));
}

TEST(Relay, AnswerThatIsTooLong) {
    const ScriptedServer server("HTTP/1.1 200 OK\r\nContent-Length: 1001\r\n\r\n" +
                                std::string(1001, 'x'));
    host::HostSettings settings = relayingTo(server.url());
    settings.bodyLimit = 1000;
    RunningHost host(settings);
    const RawResponse response = host.get("/enterprise/x");
    EXPECT_EQ(response.status(), 502);
    EXPECT_EQ(response.body, "the enterprise server answers with too much\n");
}

TEST(Relay, AnswerThatIsNoHttp) {
    const ScriptedServer server("SSH-2.0-OpenSSH\r\n");
    RunningHost host(relayingTo(server.url()));
    EXPECT_EQ(host.get("/enterprise/x").status(), 502);
}

TEST(Relay, AnswerThatEndsEarly) {
    const ScriptedServer server("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
    RunningHost host(relayingTo(server.url()));
    EXPECT_EQ(host.get("/enterprise/x").status(), 502);
}

TEST(Relay, ServerThatDoesNotAnswerInTime) {
    const ScriptedServer server("", ScriptedServer::Then::KeepOpen);
    host::HostSettings settings = relayingTo(server.url());
    settings.enterpriseTimeout = 1s;
    RunningHost host(settings);
    const auto start = Clock::now();
    EXPECT_EQ(host.get("/enterprise/x").status(), 502);
    EXPECT_LT(Clock::now() - start, 50s);
}

TEST(Relay, SlowServerKeepsNoCallWaiting) {
    const ScriptedServer server("", ScriptedServer::Then::KeepOpen);
    RunningHost host(relayingTo(server.url()));
    host.csrf();
    std::future<RawResponse> slow =
        std::async(std::launch::async, [&host] { return host.get("/enterprise/x"); });
    while (server.requests().empty()) {
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_EQ(host.post("/client20/LocalXmlExists", "[]").status(), 200);
    const auto start = Clock::now();
    host.stop();
    EXPECT_EQ(slow.get().status(), 502);
    EXPECT_LT(Clock::now() - start, 50s);
}

}  // namespace
}  // namespace tandril::test
