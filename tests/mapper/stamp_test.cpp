#include "mapper/stamp.h"

#include <gtest/gtest.h>

namespace tandril::mapper {
namespace {

TEST(Stamp, ShowsMonthDayYearAndTime) {
    EXPECT_EQ(monthDayYear("20021115 103059"), "11/15/2002");
    EXPECT_EQ(hourMinute("20021115 103059"), "1030");
}

TEST(Stamp, LacksWhatAShortOneLacks) {
    EXPECT_EQ(monthDayYear("2002"), "//2002");
    EXPECT_EQ(monthDayYear("200211"), "11//2002");
    EXPECT_EQ(monthDayYear(""), "//");
    EXPECT_EQ(hourMinute("20021115"), "");
    EXPECT_EQ(hourMinute("20021115 10"), "10");
}

TEST(Stamp, CountsCharactersNotBytes) {
    EXPECT_EQ(stampPart("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80x", 2, 2),
              "\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(stampPart("\xC3\xA4x", 2, 5), "x");
    EXPECT_EQ(stampPart("\xC3\xA4x", 3, 1), "");
}

}  // namespace
}  // namespace tandril::mapper
