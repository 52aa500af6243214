#include "forms/stamp_conversion.h"

#include <gtest/gtest.h>

namespace tandril::test {
namespace {

struct StampCase {
    const char* stamp;
    const char* converted;
    bool isValid;
};

constexpr StampCase stamps[] = {
    {"20261115 115939", "15/11/2026 11:59:39", true},
    {"20261115T115939", "15/11/2026 11:59:39", true},
    {"20261115 115939 and more", "15/11/2026 11:59:39", true},
    {"", "", false},
    // Without a time, or with part of one.
    {"20261115", "15/11/2026 00:00:00", true},
    {"20261115 ", "15/11/2026 00:00:00", true},
    {"20261115 1", "15/11/2026 1:00:00", true},
    {"20261115 11", "15/11/2026 11:00:00", true},
    {"20261115 1159", "15/11/2026 11:59:00", true},
    // Too short, or not numeric.
    {"2026", "", false},
    {"202611", "", false},
    {"2026111", "1/11/2026 00:00:00", true},
    {"abcd1115 115939", "", false},
    {"2026ab15 115939", "", false},
    {"202611ab 115939", "", false},
    {"2026-115 115939", "", false},
    {"2026 115 115939", "", false},
    {"20+61115 115939", "", false},
    {"tomorrow", "", false},
    // Years compare as text.
    {"19701231 235959", "", false},
    {"19710101 000000", "01/01/1971 00:00:00", true},
    {"20371231 235959", "31/12/2037 23:59:59", true},
    {"20380101 000000", "", false},
    {"99991231 235959", "", false},
    {"00001231 235959", "", false},
    // Months above 12 do not convert; what is no day or time converts all the same, but is invalid.
    {"20261315 115939", "", false},
    {"20260015 115939", "15/00/2026 11:59:39", false},
    {"20261100 115939", "00/11/2026 11:59:39", false},
    {"20261131 115939", "31/11/2026 11:59:39", false},
    {"20260229 115939", "29/02/2026 11:59:39", false},
    {"20280229 115939", "29/02/2028 11:59:39", true},
    {"20261115 240000", "15/11/2026 24:00:00", false},
    {"20261115 236000", "15/11/2026 23:60:00", false},
    {"20261115 235960", "15/11/2026 23:59:60", false},
    {"20261115 ab0000", "15/11/2026 ab:00:00", false},
    {"20261115 -10000", "15/11/2026 -1:00:00", false},
};

TEST(StampConversion, DayComesFirst) {
    for (const StampCase& row : stamps) {
        EXPECT_EQ(forms::convertStamp(row.stamp), row.converted) << row.stamp;
    }
}

TEST(StampConversion, ValidIsADayOfTheCalendarAndATimeOfDay) {
    for (const StampCase& row : stamps) {
        EXPECT_EQ(forms::isValidStamp(row.stamp), row.isValid) << row.stamp;
    }
}

}  // namespace
}  // namespace tandril::test
