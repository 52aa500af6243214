#include "host/request_rules.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

namespace tandril::host {
namespace {

constexpr int port = 8720;
constexpr std::size_t limit = 1000;
constexpr const char* ownOrigin = "http://127.0.0.1:8720";
constexpr const char* jsonType = "application/json";

// A request that can be bent in one place.
struct Draft {
    std::string method;
    std::string target;
    std::vector<std::pair<std::string, std::string>> headers;

    // With that header in place of those of the same name; an empty value takes them away.
    Draft with(const std::string& name, const std::string& value) const {
        Draft draft = *this;
        std::erase_if(draft.headers, [&name](const auto& header) { return header.first == name; });
        if (!value.empty()) {
            draft.headers.emplace_back(name, value);
        }
        return draft;
    }
    Draft without(const std::string& name) const { return with(name, ""); }
    Draft adding(const std::string& name, const std::string& value) const {
        Draft draft = *this;
        draft.headers.emplace_back(name, value);
        return draft;
    }
    Draft to(const std::string& newTarget) const {
        Draft draft = *this;
        draft.target = newTarget;
        return draft;
    }
    Draft by(const std::string& newMethod) const {
        Draft draft = *this;
        draft.method = newMethod;
        return draft;
    }
};

Draft get(const std::string& target) {
    return {"GET", target, {{"Host", "127.0.0.1:8720"}, {"Cookie", "tandril-8720=session"}}};
}

Draft post(const std::string& target) {
    return {"POST",
            target,
            {{"Host", "127.0.0.1:8720"},
             {"Cookie", "tandril-8720=session"},
             {"Origin", ownOrigin},
             {"X-Tandril-Csrf", "csrf"},
             {"Content-Type", jsonType},
             {"Content-Length", "2"}}};
}

Draft call() {
    return post("/client20/ListOrders");
}

// 0 when the request may go on.
int status(const Draft& draft, Tokens& tokens) {
    Request request{draft.method, draft.target, {}, {}};
    for (const auto& [name, value] : draft.headers) {
        request.headers.add(name, value);
    }
    const std::optional<Response> response = refusal(request, {tokens, port, limit});
    return response ? response->status : 0;
}

int status(const Draft& draft) {
    Tokens tokens("launch", "session", "csrf");
    return status(draft, tokens);
}

TEST(RequestRules, LetThePagesRequestsThrough) {
    EXPECT_EQ(status(get("/")), 0);
    EXPECT_EQ(status(get("/style/page.css")), 0);
    EXPECT_EQ(status(get("/session").adding("Sec-Fetch-Site", "same-origin")), 0);
    EXPECT_EQ(status(get("/client20/methods")), 0);
    EXPECT_EQ(status(get("/enterprise/orders?of=1")), 0);
    EXPECT_EQ(status(call()), 0);
    EXPECT_EQ(status(post("/enterprise/upload").with("Content-Type", "text/xml")), 0);
}

TEST(RequestRules, MethodIsGetOrPost) {
    for (const char* method : {"HEAD", "PUT", "DELETE", "OPTIONS", "TRACE", "get", ""}) {
        EXPECT_EQ(status(get("/").by(method)), 405) << method;
    }
}

TEST(RequestRules, HostIsExactlyOurs) {
    for (const char* host :
         {"", "127.0.0.1", "127.0.0.1:8721", "localhost:8720", "evil.example:8720", "[::1]:8720",
          "127.0.0.1:8720.", "127.0.0.1:08720", "127.1:8720", "http://127.0.0.1:8720"}) {
        EXPECT_EQ(status(get("/").with("Host", host)), 421) << host;
        EXPECT_EQ(status(call().with("Host", host)), 421) << host;
    }
    EXPECT_EQ(status(get("/").adding("host", "127.0.0.1:8720")), 421);
}

TEST(RequestRules, PathIsPlain) {
    for (const char* path : {"",          "index.html", "http://127.0.0.1:8720/",
                             "*",         "/..",        "/.",
                             "/a/../b",   "/a/./b",     "/a/..",
                             "/%2e%2e/x", "/.%2E/x",    "/a\\b",
                             "/a%5Cb",    "/a%00b",     "/a%0Ab",
                             "/a%7f",     "/a%2Fb",     "/..%2f..%2fetc/passwd",
                             "/%",        "/%zz",       "/a%2"}) {
        EXPECT_EQ(status(get(path)), 400) << path;
    }
    for (const char* path : {"/...", "/..a", "/a..", "/%20", "/%C3%A4", "//x", "/%252e%252e/x"}) {
        EXPECT_EQ(status(get(path)), 0) << path;
    }
}

TEST(RequestRules, LaunchTokenIsTheRightOneAndGoodOnce) {
    Tokens tokens("launch", "session", "csrf");
    const Draft visit = get("/?launch=launch").without("Cookie");
    EXPECT_EQ(status(visit.to("/?launch=launcH"), tokens), 403);
    EXPECT_EQ(status(visit.to("/?launch="), tokens), 403);
    EXPECT_EQ(status(visit.to("/?launch"), tokens), 403);
    EXPECT_EQ(status(visit.to("/?x=1&launch=launch"), tokens), 0);
    EXPECT_EQ(status(visit, tokens), 403);
    EXPECT_EQ(status(get("/?launch=launch"), tokens), 403) << "also with a session";
}

TEST(RequestRules, LaunchTokenIsUsedUpByNothingElse) {
    Tokens tokens("launch", "session", "csrf");
    EXPECT_EQ(status(get("/page?launch=launch").without("Cookie"), tokens), 401);
    EXPECT_EQ(status(call().to("/?launch=launch").without("Cookie"), tokens), 401);
    EXPECT_EQ(status(get("/?launch=launch").with("Host", "evil.example"), tokens), 421);
    EXPECT_EQ(status(get("/?launch=launch").without("Cookie"), tokens), 0);
}

TEST(RequestRules, SessionCookieIsThereAndValid) {
    for (const char* cookie :
         {"", "tandril-8720=", "tandril-8720=wrong!!", "tandril-8720=session2",
          "tandril-8721=session", "Tandril-8720=session", "session", "x=tandril-8720=session",
          "tandril-8720 =session", "tandril-8720=csrf", "tandril-8720=launch"}) {
        EXPECT_EQ(status(get("/").with("Cookie", cookie)), 401) << cookie;
        EXPECT_EQ(status(get("/nowhere").with("Cookie", cookie)), 401) << cookie;
        EXPECT_EQ(status(call().with("Cookie", cookie)), 401) << cookie;
    }
}

TEST(RequestRules, SessionCookieMayStandAmongOthers) {
    EXPECT_EQ(status(get("/").with("Cookie", "a=1; tandril-8720=session;b")), 0);
    EXPECT_EQ(status(get("/").with("Cookie", "tandril-8720=old; tandril-8720=session")), 0);
    EXPECT_EQ(status(get("/").with("Cookie", "a=1").adding("Cookie", "tandril-8720=session")), 0);
}

TEST(RequestRules, OriginIsNoOtherSite) {
    for (const char* origin : {"http://evil.example", "null", "https://127.0.0.1:8720",
                               "http://127.0.0.1:8721", "http://127.0.0.1", "http://localhost:8720",
                               "http://127.0.0.1:8720/", "http://127.0.0.1:8720.evil.example"}) {
        EXPECT_EQ(status(get("/session").with("Origin", origin)), 403) << origin;
        EXPECT_EQ(status(call().with("Origin", origin)), 403) << origin;
        EXPECT_EQ(status(call().adding("Origin", origin)), 403) << origin;
        EXPECT_EQ(status(get("/").with("Origin", origin)), 0) << origin;
    }
}

TEST(RequestRules, FetchSiteIsNoOtherSite) {
    for (const char* site : {"cross-site", "same-site", "Same-Origin", "anything"}) {
        EXPECT_EQ(status(get("/session").with("Sec-Fetch-Site", site)), 403) << site;
        EXPECT_EQ(status(call().with("Sec-Fetch-Site", site)), 403) << site;
        EXPECT_EQ(status(get("/").with("Sec-Fetch-Site", site)), 0) << site;
    }
    EXPECT_EQ(status(get("/session").with("Sec-Fetch-Site", "none")), 0);
}

TEST(RequestRules, PostNamesOurSite) {
    const Draft bare = call().without("Origin");
    EXPECT_EQ(status(bare), 403);
    EXPECT_EQ(status(bare.with("Sec-Fetch-Site", "none")), 403);
    EXPECT_EQ(status(bare.with("Sec-Fetch-Site", "same-origin")), 0);
    EXPECT_EQ(status(call().with("Sec-Fetch-Site", "none")), 0);
    EXPECT_EQ(status(post("/enterprise/x").without("Origin")), 403);
}

TEST(RequestRules, PostHasTheCsrfToken) {
    for (const char* token : {"", "wrong", "session", "launch", "CSRF"}) {
        EXPECT_EQ(status(call().with("X-Tandril-Csrf", token)), 403) << token;
        EXPECT_EQ(status(post("/enterprise/x").with("X-Tandril-Csrf", token)), 403) << token;
    }
    EXPECT_EQ(status(call().adding("X-Tandril-Csrf", "csrf")), 403) << "twice";
}

TEST(RequestRules, EnterpriseIsAskedByScriptsOnly) {
    for (const char* use : {"document", "iframe", "frame", "object", "embed", "image", "script"}) {
        EXPECT_EQ(status(get("/enterprise/x").with("Sec-Fetch-Dest", use)), 403) << use;
        EXPECT_EQ(status(post("/enterprise/x").with("Sec-Fetch-Dest", use)), 403) << use;
        EXPECT_EQ(status(get("/page.html").with("Sec-Fetch-Dest", use)), 0) << use;
    }
    EXPECT_EQ(status(get("/enterprise/x").with("Sec-Fetch-Dest", "empty")), 0);
}

TEST(RequestRules, BodyOfACallIsJson) {
    for (const char* type :
         {"", "text/plain", "application/x-www-form-urlencoded", "multipart/form-data", "text/json",
          "application/jsonx", "application/json; charset=utf-16", "application/json, text/plain",
          "application/json;charset=latin1", "application/json; charset=\"utf-16\""}) {
        EXPECT_EQ(status(call().with("Content-Type", type)), 415) << type;
        EXPECT_EQ(status(post("/enterprise/x").with("Content-Type", type)), 0) << type;
    }
    EXPECT_EQ(status(call().adding("Content-Type", jsonType)), 415) << "twice";
    for (const char* type : {"application/json; charset=utf-8", "Application/JSON;charset=UTF-8",
                             "application/json ; charset=\"utf-8\"", "application/json;x=1"}) {
        EXPECT_EQ(status(call().with("Content-Type", type)), 0) << type;
    }
}

TEST(RequestRules, BodyIsNotCompressed) {
    EXPECT_EQ(status(call().with("Content-Encoding", "gzip")), 415);
    EXPECT_EQ(status(post("/enterprise/x").with("Content-Encoding", "br")), 415);
}

TEST(RequestRules, BodyHasOneClearLength) {
    EXPECT_EQ(status(call().without("Content-Length")), 0);
    EXPECT_EQ(status(call().without("Content-Length").with("Transfer-Encoding", "Chunked")), 0);
    EXPECT_EQ(status(call().with("Transfer-Encoding", "chunked")), 400);
    EXPECT_EQ(status(call().adding("Content-Length", "2")), 400);
    EXPECT_EQ(status(call().without("Content-Length").with("Transfer-Encoding", "gzip, chunked")),
              400);
    for (const char* length : {"-1", "+1", "1x", "0x1", " 1", "1,1"}) {
        EXPECT_EQ(status(call().with("Content-Length", length)), 400) << length;
    }
}

TEST(RequestRules, BodyIsNotTooLong) {
    EXPECT_EQ(status(call().with("Content-Length", "1000")), 0);
    for (const char* length : {"1001", "99999999999999999999999999"}) {
        EXPECT_EQ(status(call().with("Content-Length", length)), 413) << length;
        EXPECT_EQ(status(post("/enterprise/x").with("Content-Length", length)), 413) << length;
    }
}

TEST(RequestRules, PathTakesTheMethod) {
    EXPECT_EQ(status(get("/client20/ListOrders")), 405);
    EXPECT_EQ(status(get("/client20/")), 405);
    for (const char* path : {"/", "/index.html", "/session", "/client20/methods", "/nowhere"}) {
        EXPECT_EQ(status(post(path)), 405) << path;
    }
}

TEST(RequestRules, RefusedMethodsComeWithThoseThatAreTaken) {
    Tokens tokens("launch", "session", "csrf");
    Request request{"GET", "/client20/ListOrders", {}, {}};
    request.headers.add("Host", "127.0.0.1:8720");
    request.headers.add("Cookie", "tandril-8720=session");
    const std::optional<Response> response = refusal(request, {tokens, port, limit});
    ASSERT_TRUE(response);
    EXPECT_EQ(response->headers.only("Allow"), "POST");
}

// A request that breaks every rule is refused by the first one; put right there, by the next.
TEST(RequestRules, AreAskedInTheirOrder) {
    Draft draft{"PUT",
                "/client20/../x",
                {{"Host", "evil.example"},
                 {"Origin", "http://evil.example"},
                 {"Content-Encoding", "gzip"},
                 {"Content-Length", "1001"}}};
    EXPECT_EQ(status(draft), 405);
    EXPECT_EQ(status(draft = draft.by("POST")), 421);
    EXPECT_EQ(status(draft = draft.with("Host", "127.0.0.1:8720")), 400);
    EXPECT_EQ(status(draft = draft.to("/client20/x")), 401);
    EXPECT_EQ(status(draft = draft.with("Cookie", "tandril-8720=session")), 403);
    EXPECT_EQ(status(draft = draft.without("Origin")), 403);
    EXPECT_EQ(status(draft = draft.with("Origin", ownOrigin)), 403);
    EXPECT_EQ(status(draft = draft.with("X-Tandril-Csrf", "csrf")), 415);
    EXPECT_EQ(status(draft = draft.with("Content-Type", jsonType)), 415);
    EXPECT_EQ(status(draft = draft.without("Content-Encoding")), 413);
    EXPECT_EQ(status(draft = draft.with("Content-Length", "2")), 0);
    EXPECT_EQ(status(draft.to("/x")), 405);
}

}  // namespace
}  // namespace tandril::host
