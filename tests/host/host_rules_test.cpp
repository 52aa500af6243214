#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/request_rules.h"
#include "host/running_host.h"

// Each rule once more through a socket: that it is asked, and what comes back.
namespace tandril::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

const std::string callPath = "/client20/LocalXmlExists";

class HostRules : public testing::Test {
  protected:
    std::string hostLine() const { return "Host: " + host::authority(host_.port()) + "\r\n"; }
    std::string cookieLine() { return "Cookie: " + host_.cookie() + "\r\n"; }

    RawResponse send(const std::string& bytes) const { return exchange(host_.port(), bytes); }

    // A request with the text `what` replaced, which must be there.
    static std::string replaced(std::string request, const std::string& what,
                                const std::string& by) {
        const std::size_t at = request.find(what);
        EXPECT_NE(at, std::string::npos) << what;
        return request.replace(at, what.size(), by);
    }
    std::string goodPost() { return host_.postHead(callPath) + "Content-Length: 2\r\n\r\n[]"; }

    RunningHost host_;
};

void expectRefusal(const RawResponse& response, int status, const std::string& reason) {
    EXPECT_EQ(response.status(), status) << response.head;
    EXPECT_EQ(response.body, reason + "\n");
    EXPECT_EQ(response.header("Content-Type"), "text/plain; charset=utf-8");
}

TEST_F(HostRules, GoodRequestsPass) {
    EXPECT_EQ(host_.get("/").body, "<!DOCTYPE html><title>start</title>");
    EXPECT_EQ(send(goodPost()).status(), 200);
}

TEST_F(HostRules, Method) {
    for (const char* method : {"HEAD", "PUT", "DELETE", "OPTIONS", "PATCH", "TRACE", "BREW"}) {
        const RawResponse response =
            send(std::string(method) + " / HTTP/1.1\r\n" + hostLine() + cookieLine() + "\r\n");
        EXPECT_EQ(response.status(), 405) << method;
        EXPECT_EQ(response.header("Allow"), "GET, POST") << method;
    }
}

TEST_F(HostRules, HostHeader) {
    const std::string reason = "the Host header must be " + host::authority(host_.port());
    expectRefusal(send("GET / HTTP/1.1\r\n" + cookieLine() + "\r\n"), 421, reason);
    expectRefusal(send("GET / HTTP/1.1\r\nHost: evil.example\r\n" + cookieLine() + "\r\n"), 421,
                  reason);
    expectRefusal(send("GET / HTTP/1.1\r\nHost: 127.0.0.1\r\n" + cookieLine() + "\r\n"), 421,
                  reason);
    expectRefusal(send("GET / HTTP/1.1\r\n" + hostLine() + hostLine() + cookieLine() + "\r\n"), 421,
                  reason);
    expectRefusal(
        send("GET /?launch=" + host_.launchToken() + " HTTP/1.1\r\nHost: evil.example\r\n\r\n"),
        421, reason);
}

TEST_F(HostRules, PathSegments) {
    for (const char* path :
         {"/../x", "/%2e%2e/x", "/a/./b", "/a%5Cb", "/a%00b", "/a%2fb", "/%zz"}) {
        expectRefusal(host_.get(path), 400, "the path is malformed");
    }
}

TEST_F(HostRules, LaunchToken) {
    const std::string rest = " HTTP/1.1\r\n" + hostLine() + "\r\n";
    const std::string reason = "the launch token is wrong or was used; start the host anew";
    expectRefusal(send("GET /?launch=0000" + rest), 403, reason);

    const RawResponse launched = send("GET /?launch=" + host_.launchToken() + rest);
    EXPECT_EQ(launched.status(), 303);
    EXPECT_EQ(launched.header("Location"), "/");
    EXPECT_THAT(launched.header("Set-Cookie"), EndsWith("; Path=/; HttpOnly; SameSite=Strict"));
    EXPECT_EQ(launched.body, "");

    expectRefusal(send("GET /?launch=" + host_.launchToken() + rest), 403, reason);
}

TEST_F(HostRules, SessionCookie) {
    const std::string reason = "there is no session; open the URL that tandril serve printed";
    for (const char* path : {"/", "/session", "/client20/methods", "/nowhere", "/enterprise/x"}) {
        expectRefusal(send("GET " + std::string(path) + " HTTP/1.1\r\n" + hostLine() + "\r\n"), 401,
                      reason);
    }
    expectRefusal(send(replaced(goodPost(), cookieLine(), "Cookie: tandril=1\r\n")), 401, reason);
}

TEST_F(HostRules, OtherSite) {
    const std::string reason = "the request comes from another site";
    expectRefusal(host_.get("/session", "Origin: http://evil.example\r\n"), 403, reason);
    expectRefusal(host_.get("/session", "Sec-Fetch-Site: cross-site\r\n"), 403, reason);
    expectRefusal(send(replaced(goodPost(), "Origin: " + host_.origin(), "Origin: null")), 403,
                  reason);
    EXPECT_EQ(host_.get("/", "Sec-Fetch-Site: cross-site\r\n").status(), 200);
}

TEST_F(HostRules, PostWithoutSite) {
    expectRefusal(send(replaced(goodPost(), "Origin: " + host_.origin() + "\r\n", "")), 403,
                  "a POST needs the Origin " + host_.origin());
    EXPECT_EQ(send(replaced(goodPost(), "Origin: " + host_.origin(), "Sec-Fetch-Site: same-origin"))
                  .status(),
              200);
}

TEST_F(HostRules, CsrfToken) {
    const std::string reason = "the header X-Tandril-Csrf is missing or wrong";
    const std::string line = "X-Tandril-Csrf: " + host_.csrf() + "\r\n";
    expectRefusal(send(replaced(goodPost(), line, "")), 403, reason);
    expectRefusal(send(replaced(goodPost(), line, "X-Tandril-Csrf: 0000\r\n")), 403, reason);
    expectRefusal(send(replaced(goodPost(), line, line + line)), 403, reason);
}

TEST_F(HostRules, EnterpriseAsDocument) {
    expectRefusal(host_.get("/enterprise/x", "Sec-Fetch-Dest: document\r\n"), 403,
                  "only scripts of the page may ask the enterprise server");
}

TEST_F(HostRules, ContentType) {
    const std::string reason = "the body of a call must be application/json in UTF-8";
    expectRefusal(send(replaced(goodPost(), "application/json", "text/plain")), 415, reason);
    expectRefusal(send(replaced(goodPost(), "Content-Type: application/json\r\n", "")), 415,
                  reason);
}

TEST_F(HostRules, CompressedBody) {
    expectRefusal(host_.post(callPath, "[]", "Content-Encoding: gzip\r\n"), 415,
                  "the body must not be compressed");
}

TEST_F(HostRules, PathTakesTheMethod) {
    const RawResponse response = host_.get(callPath);
    expectRefusal(response, 405, "this takes POST only");
    EXPECT_EQ(response.header("Allow"), "POST");
    EXPECT_EQ(host_.post("/index.html", "[]").status(), 405);
}

TEST_F(HostRules, PathThatLeadsNowhere) {
    expectRefusal(host_.get("/nowhere"), 404, "there is no such page");
    expectRefusal(host_.get("/client20"), 404, "there is no such page");
}

TEST_F(HostRules, EveryResponseCarriesTheSameProtection) {
    const std::vector<RawResponse> responses{
        send("GET /?launch=" + host_.launchToken() + " HTTP/1.1\r\n" + hostLine() + "\r\n"),
        send("GET / HTTP/1.1\r\n" + hostLine() + "\r\n"),
        send("nonsense\r\n\r\n"),
        send("GET /" + std::string(9000, 'x') + " HTTP/1.1\r\n" + hostLine() + "\r\n"),
        send("BREW / HTTP/1.1\r\n" + hostLine() + "\r\n"),
        send("GET / HTTP/1.1\r\n" + hostLine() + "Range: nonsense\r\n\r\n"),
        send("POST /x HTTP/1.1\r\n" + hostLine() + "Expect: 100-continue\r\n\r\n"),
    };
    const std::vector<int> statuses{303, 401, 400, 414, 405, 416, 401};
    for (std::size_t i = 0; i < responses.size(); ++i) {
        EXPECT_EQ(responses[i].status(), statuses[i]);
        EXPECT_THAT(responses[i].header("Content-Security-Policy"),
                    HasSubstr("default-src 'self'"));
        EXPECT_EQ(responses[i].header("X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(responses[i].header("Cache-Control"), "no-store");
        EXPECT_EQ(responses[i].header("Referrer-Policy"), "no-referrer");
        EXPECT_EQ(responses[i].header("Connection"), "close");
    }
}

TEST_F(HostRules, EverySuccessCarriesTheSameProtection) {
    for (const RawResponse& response :
         {host_.get("/"), host_.get("/session"), host_.get("/client20/methods"),
          host_.post(callPath, "[]"), host_.post("/client20/None", "[]"), host_.get("/nowhere")}) {
        EXPECT_THAT(response.header("Content-Security-Policy"), Not(HasSubstr("unsafe")));
        EXPECT_THAT(response.header("Content-Security-Policy"), HasSubstr("default-src 'self'"));
        EXPECT_EQ(response.header("X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(response.header("Cache-Control"), "no-store");
    }
}

TEST_F(HostRules, NoTokenIsEverLogged) {
    const std::string session = host_.cookie().substr(host_.cookie().find('=') + 1);
    const std::string csrf = host_.csrf();
    const std::string launch = host_.launchToken();
    for (const std::string& token : {session, csrf, launch}) {
        host_.get("/" + token);
        host_.get("/x?" + token);
        host_.post("/client20/" + token, "[]");
        send("GET /?launch=" + token + " HTTP/1.1\r\n" + hostLine() + "\r\n");
        send(token + "\r\n\r\n");
        send(token + " / HTTP/1.1\r\n\r\n");
        send("GET / HTTP/1.1\r\nHost: " + token + "\r\n\r\n");
    }
    const std::string log = host_.log();
    EXPECT_THAT(log, HasSubstr(" GET /session 200\n"));
    EXPECT_THAT(log, HasSubstr(" GET /[token] 404 "));
    for (const std::string& token : {session, csrf, launch}) {
        EXPECT_THAT(log, Not(HasSubstr(token.substr(0, 16))));
    }
}

}  // namespace
}  // namespace tandril::test
