#include "platform/windows/wall_clock.h"

#include <gmock/gmock.h>

namespace tandril::platform {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

SYSTEMTIME someTime() {
    SYSTEMTIME time{};
    time.wYear = 2026;
    time.wMonth = 11;
    time.wDay = 5;
    time.wHour = 21;
    time.wMinute = 9;
    time.wSecond = 3;
    return time;
}

TEST(WallClockTest, TheGeneralDateIsThatOfTheLocale) {
    EXPECT_EQ(formatGeneralDate(someTime(), L"en-US"), "11/5/2026 9:09:03 PM");
    EXPECT_EQ(formatGeneralDate(someTime(), L"en-GB"), "05/11/2026 21:09:03");
}

TEST(WallClockTest, NowIsOneLine) {
    const std::string now = WallClock().generalDate();
    EXPECT_THAT(now, HasSubstr(" "));
    EXPECT_THAT(now, Not(HasSubstr("\n")));
    EXPECT_THAT(now, HasSubstr(":"));
}

}  // namespace
}  // namespace tandril::platform
