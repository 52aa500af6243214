#include "platform/windows/wide.h"

#include <gmock/gmock.h>

namespace tandril::platform {
namespace {

TEST(WideTest, EveryCharacterComesBack) {
    const std::string text = "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x94\xA7";
    EXPECT_EQ(toWide(text), L"a\u00FC\u20AC\U0001F527");
    EXPECT_EQ(toUtf8(toWide(text)), text);
    EXPECT_EQ(toUtf8(L""), "");
    EXPECT_EQ(toWide(""), L"");
}

TEST(WideTest, ZerosArePartOfTheText) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(toWide(text).size(), 3U);
    EXPECT_EQ(toUtf8(toWide(text)), text);
}

TEST(WideTest, WhatIsNoTextIsReplaced) {
    EXPECT_EQ(toWide("a\xFFz"), L"a\uFFFDz");
    EXPECT_EQ(toUtf8(std::wstring{L'a', wchar_t{0xD83D}, L'z'}), "a\xEF\xBF\xBDz");
}

}  // namespace
}  // namespace tandril::platform
