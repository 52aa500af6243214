#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "component/methods.h"
#include "host/running_host.h"

// What the page gets for its calls.
namespace tandril::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

host::HostSettings smallBodies() {
    host::HostSettings settings;
    settings.bodyLimit = 1000;
    return settings;
}

TEST(HostCalls, ResultOfACall) {
    RunningHost host;
    const RawResponse response = host.post("/client20/LocalXmlExists", "[]");
    EXPECT_EQ(response.status(), 200);
    EXPECT_EQ(response.header("Content-Type"), "application/json");
    EXPECT_EQ(response.body, "{\"result\":false}\n");
}

TEST(HostCalls, MethodNameInAnyCase) {
    RunningHost host;
    EXPECT_EQ(host.post("/client20/localxmlexists", "[]").body, "{\"result\":false}\n");
    EXPECT_EQ(host.post("/client20/%4CocalXmlExists", "[]").body, "{\"result\":false}\n");
}

TEST(HostCalls, CallsWorkOnTheHome) {
    RunningHost host;
    EXPECT_EQ(host.post("/client20/Initialize", "[]").body, "{\"result\":\"\"}\n");
    EXPECT_EQ(host.post("/client20/SaveWebPage", "[\"<p>\xC3\xA4</p>\"]").body,
              "{\"result\":null}\n");
    EXPECT_EQ(host.home().read("Vorn Tandril/harbrook.html"), "<p>\xC3\xA4</p>");
}

TEST(HostCalls, FaultOfACall) {
    RunningHost host;
    const RawResponse response = host.post("/client20/SaveWebPage", "[\"no folder yet\"]");
    EXPECT_EQ(response.status(), 500);
    EXPECT_EQ(response.header("Content-Type"), "application/json");
    EXPECT_THAT(json::parse(response.body).at("fault").get<std::string>(),
                HasSubstr("harbrook.html"));
}

TEST(HostCalls, UnknownMethod) {
    RunningHost host;
    for (const char* name : {"NoSuchMethod", "LocalXmlExists/", "LocalXmlExists/x", ""}) {
        const RawResponse response = host.post("/client20/" + std::string(name), "[]");
        EXPECT_EQ(response.status(), 404) << name;
        EXPECT_EQ(response.body, "{\"invalid\":\"unknown method: " + std::string(name) + "\"}\n");
    }
}

TEST(HostCalls, WrongArguments) {
    RunningHost host;
    struct Row {
        const char* body;
        const char* invalid;
    };
    for (const Row& row :
         {Row{"", "not JSON at byte 1"}, Row{"[", "not JSON at byte 2"},
          Row{"\"\xFF\"", "not JSON at byte 2"},
          Row{"{}", "the arguments must be a JSON array: LocalXmlExists() -> boolean"},
          Row{"[1]", "wrong number of arguments: LocalXmlExists() -> boolean"}}) {
        const RawResponse response = host.post("/client20/LocalXmlExists", row.body);
        EXPECT_EQ(response.status(), 400) << row.body;
        EXPECT_EQ(response.body, "{\"invalid\":\"" + std::string(row.invalid) + "\"}\n");
    }
}

TEST(HostCalls, BodyInChunks) {
    RunningHost host;
    const RawResponse response =
        exchange(host.port(), host.postHead("/client20/GetVariable") +
                                  "Transfer-Encoding: chunked\r\n\r\n1\r\n[\r\n3\r\n\"x\"\r\n1\r\n]"
                                  "\r\n0\r\n\r\n");
    EXPECT_EQ(response.body, "{\"result\":\"\"}\n");
}

TEST(HostCalls, NoBodyAtAllIsAnEmptyOne) {
    RunningHost host;
    const RawResponse response =
        exchange(host.port(), host.postHead("/client20/LocalXmlExists") + "\r\n");
    EXPECT_EQ(response.body, "{\"invalid\":\"not JSON at byte 1\"}\n");
}

TEST(HostCalls, BodyOfTheLimitIsTaken) {
    RunningHost host(smallBodies());
    const std::string body = "[]" + std::string(998, ' ');
    EXPECT_EQ(host.post("/client20/LocalXmlExists", body).status(), 200);
    EXPECT_EQ(host.post("/client20/LocalXmlExists", body + " ").status(), 413);
}

TEST(HostCalls, LongBodyIsRefusedBeforeItComes) {
    RunningHost host(smallBodies());
    const RawConnection connection(host.port());
    connection.send(host.postHead("/client20/LocalXmlExists") + "Content-Length: 1001\r\n\r\n");
    const RawResponse response(connection.readAll());
    EXPECT_EQ(response.status(), 413);
    EXPECT_EQ(response.body, "the body is longer than 1000 bytes\n");
}

TEST(HostCalls, LongBodyThatComesAllTheSameDoesNotDestroyTheAnswer) {
    RunningHost host(smallBodies());
    EXPECT_EQ(host.post("/client20/LocalXmlExists", std::string(5'000'000, ' ')).status(), 413);
}

TEST(HostCalls, LongBodyInChunksIsRefused) {
    RunningHost host(smallBodies());
    const RawResponse response =
        exchange(host.port(), host.postHead("/client20/LocalXmlExists") +
                                  "Transfer-Encoding: chunked\r\n\r\n3E9\r\n" +
                                  std::string(1001, ' ') + "\r\n0\r\n\r\n");
    EXPECT_EQ(response.status(), 413);
    EXPECT_EQ(response.body, "the body is longer than 1000 bytes\n");
}

TEST(HostCalls, ExpectationIsMetOnlyWhenTheHeadIsGood) {
    RunningHost host;
    const std::string rest = "Expect: 100-continue\r\nContent-Length: 2\r\n\r\n[]";
    const RawResponse good =
        exchange(host.port(), host.postHead("/client20/LocalXmlExists") + rest);
    EXPECT_EQ(good.status(), 100);
    EXPECT_THAT(good.body, HasSubstr("{\"result\":false}\n"));
    const RawResponse bad = exchange(host.port(), "POST /client20/X HTTP/1.1\r\n" + rest);
    EXPECT_EQ(bad.status(), 421);
}

TEST(HostCalls, MethodTable) {
    RunningHost host;
    const json table = json::parse(host.get("/client20/methods").body);
    ASSERT_EQ(table.size(), methods().size());
    EXPECT_EQ(table[0], json::parse(R"({"slot":1,"name":"Initialize","parameters":[],
                                        "result":"variant"})"));
    EXPECT_EQ(table[45], json::parse(R"({"slot":46,"name":"getColumnHeadingsForHRA","parameters":[
        {"name":"iCols","kind":"16-bit integer","byReference":true},
        {"name":"iBoiTag","kind":"string","byReference":false}],"result":"string"})"));
}

TEST(HostCalls, SessionTellsTheCsrfToken) {
    RunningHost host;
    const json session = json::parse(host.get("/session").body);
    EXPECT_EQ(session.size(), 1U);
    EXPECT_EQ(session.at("csrf").get<std::string>().size(), 64U);
    EXPECT_NE(host.cookie(), "tandril-" + std::to_string(host.port()) + "=" + host.csrf());
}

}  // namespace
}  // namespace tandril::test
