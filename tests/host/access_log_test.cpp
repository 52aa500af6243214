#include "host/access_log.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <string>

namespace tandril::host {
namespace {

std::string lineFor(const std::string& method, const std::string& target,
                    const Response& response) {
    const Tokens tokens("1111", "2222", "3333");
    return logLine({method, target, {}, {}}, response, tokens);
}

TEST(AccessLog, NamesMethodPathAndStatus) {
    EXPECT_EQ(lineFor("POST", "/client20/ListOrders", {200, "application/json", "{}", {}}),
              "POST /client20/ListOrders 200");
}

TEST(AccessLog, NamesTheReasonOfARefusal) {
    EXPECT_EQ(lineFor("GET", "/x", textResponse(404, "there is no such page")),
              "GET /x 404 there is no such page");
}

TEST(AccessLog, KeepsContentsOut) {
    EXPECT_EQ(lineFor("GET", "/a.txt", textResponse(200, "content")), "GET /a.txt 200");
    EXPECT_EQ(lineFor("POST", "/client20/X", {500, "application/json", "{\"fault\":\"x\"}", {}}),
              "POST /client20/X 500");
}

TEST(AccessLog, LeavesTheQueryOut) {
    EXPECT_EQ(lineFor("GET", "/?launch=1111", {303, "", "", {}}), "GET / 303");
}

TEST(AccessLog, BlanksTokensInPaths) {
    EXPECT_EQ(lineFor("GET", "/1111/" + std::string(300, 'x') + "2222", {404, "", "", {}}),
              "GET /[token]/" + std::string(191, 'x') + " 404");
    EXPECT_EQ(lineFor("2222", "/3333", {404, "", "", {}}), "[token] /[token] 404");
}

TEST(AccessLog, KeepsForeignCharactersOutOfTheTerminal) {
    EXPECT_EQ(lineFor("", "/a\x1B[2J\n\xC3\xA4 b", {400, "", "", {}}), "- /a?[2J????b 400");
}

TEST(AccessLog, WritesWholeLinesWithTheTime) {
    const Tokens tokens("1111", "2222", "3333");
    std::ostringstream out;
    AccessLog log(out, tokens);
    log.write({"GET", "/", {}, {}}, {200, "", "", {}});
    const std::regex line("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2} GET / 200\n");
    EXPECT_TRUE(std::regex_match(out.str(), line)) << out.str();
}

}  // namespace
}  // namespace tandril::host
