#include "host/http_message.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tandril::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Headers, AreFoundInAnyCase) {
    Headers headers;
    headers.add("X-One", "1");
    headers.add("x-two", "2");
    headers.add("X-ONE", "3");
    EXPECT_THAT(headers.all("x-one"), ElementsAre("1", "3"));
    EXPECT_THAT(headers.all("X-Two"), ElementsAre("2"));
    EXPECT_THAT(headers.all("X"), IsEmpty());
}

TEST(Headers, OnlyIsEmptyWhenThereAreSeveral) {
    Headers headers;
    headers.add("Host", "a");
    EXPECT_EQ(headers.only("host"), "a");
    headers.add("host", "a");
    EXPECT_EQ(headers.only("host"), "");
    EXPECT_EQ(headers.only("other"), "");
}

TEST(Request, TargetComesApartAtTheFirstQuestionMark) {
    const Request request{"GET", "/a?b=1?c", {}, {}};
    EXPECT_EQ(request.rawPath(), "/a");
    EXPECT_EQ(request.rawQuery(), "b=1?c");
    const Request plain{"GET", "/a", {}, {}};
    EXPECT_EQ(plain.rawPath(), "/a");
    EXPECT_EQ(plain.rawQuery(), "");
}

TEST(PercentDecode, DecodesOnce) {
    std::string decoded;
    EXPECT_TRUE(percentDecode("/a%20b%2Fc%2f%C3%A4+%2520", decoded));
    EXPECT_EQ(decoded, "/a b/c/\xC3\xA4+%20");
}

TEST(PercentDecode, RefusesHalfAnEscape) {
    std::string decoded;
    for (const char* text : {"%", "%2", "a%", "%g0", "%0g", "%-1", "% 1", "%+1"}) {
        EXPECT_FALSE(percentDecode(text, decoded)) << text;
    }
}

TEST(QueryParameter, FindsTheFirstOfThatName) {
    std::string_view value;
    EXPECT_TRUE(queryParameter("a=1&launch=x=y&launch=z", "launch", value));
    EXPECT_EQ(value, "x=y");
    EXPECT_TRUE(queryParameter("launch", "launch", value));
    EXPECT_EQ(value, "");
    EXPECT_TRUE(queryParameter("&&launch=1", "launch", value));
    EXPECT_EQ(value, "1");
    for (const char* query : {"", "&", "xlaunch=1", "launchx=1", "x=launch"}) {
        EXPECT_FALSE(queryParameter(query, "launch", value)) << query;
    }
}

}  // namespace
}  // namespace tandril::host
