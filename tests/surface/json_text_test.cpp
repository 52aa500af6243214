#include "surface/json_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tandril::surface {
namespace {

std::string errorOf(const std::string& text) {
    try {
        parseJson(text);
    } catch (const InvalidJson& error) {
        return error.what();
    }
    return "no error";
}

std::string nested(int levels) {
    const auto count = static_cast<std::size_t>(levels);
    return std::string(count, '[') + std::string(count, ']');
}

TEST(JsonText, ReadsAValueWithBlanksAroundIt) {
    EXPECT_EQ(parseJson(" [1, \"\xC3\xA4\"]\r"), nlohmann::json({1, "\xC3\xA4"}));
}

TEST(JsonText, LastOfEqualMembersCounts) {
    EXPECT_EQ(parseJson(R"({"a":1,"a":2})"), nlohmann::json({{"a", 2}}));
}

TEST(JsonText, NamesTheByteOfAnError) {
    EXPECT_EQ(errorOf(""), "not JSON at byte 1");
    EXPECT_EQ(errorOf("nul"), "not JSON at byte 4");
    EXPECT_EQ(errorOf("[1] 2"), "not JSON at byte 5");
}

TEST(JsonText, RefusesBytesThatAreNotUtf8) {
    EXPECT_EQ(errorOf("\"\xFF\""), "not JSON at byte 2");
    EXPECT_EQ(errorOf("\"\xC0\x80\""), "not JSON at byte 2");
}

TEST(JsonText, RefusesHalfASurrogatePair) {
    EXPECT_NE(errorOf(R"("\ud800")"), "no error");
}

TEST(JsonText, RefusesANumberThatDoesNotFit) {
    EXPECT_EQ(errorOf("[1e999]"), "the JSON has a number that is out of range");
}

TEST(JsonText, RefusesDeepNestingOfAnyLength) {
    EXPECT_EQ(errorOf(nested(100)), "no error");
    EXPECT_EQ(errorOf(nested(101)), "the JSON nests deeper than 100 levels");
    EXPECT_EQ(errorOf(std::string(2'000'000, '[')), "the JSON nests deeper than 100 levels");
    EXPECT_EQ(errorOf(R"({"a":)" + nested(100) + "}"), "the JSON nests deeper than 100 levels");
}

TEST(JsonText, RepeatsNothingOfTheInputInAnError) {
    EXPECT_EQ(errorOf("\"secret\" x").find("secret"), std::string::npos);
}

TEST(JsonText, WritesOneLineOfUtf8) {
    EXPECT_EQ(toLine({{"b", "\xC3\xA4\n"}, {"a", nullptr}}), "{\"b\":\"\xC3\xA4\\n\",\"a\":null}");
}

TEST(JsonText, WritesForeignBytesAsReplacementCharacters) {
    EXPECT_EQ(toLine("a\xFF z"), "\"a\xEF\xBF\xBD z\"");
}

}  // namespace
}  // namespace tandril::surface
