#include "platform/system_path.h"

#include <gmock/gmock.h>

namespace tandril::platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

TEST(SystemPathTest, PartsFollowTheDrive) {
    EXPECT_THAT(systemPathParts("C:\\a b\\c.txt"), Optional(ElementsAre("a b", "c.txt")));
    EXPECT_THAT(systemPathParts("c:\\a\\"), Optional(ElementsAre("a")));
    EXPECT_THAT(systemPathParts("C:\\"), Optional(IsEmpty()));
    EXPECT_THAT(systemPathParts("C:"), Optional(IsEmpty()));
}

TEST(SystemPathTest, ThreeDotsAreAName) {
    EXPECT_THAT(systemPathParts("C:\\...\\.a"), Optional(ElementsAre("...", ".a")));
}

TEST(SystemPathTest, PlainFileNamesStayInTheirFolder) {
    for (const char* name : {"a.exe", "a b", "..a", "a..", "ä"}) {
        EXPECT_TRUE(isPlainFileName(name)) << name;
    }
    for (const char* name : {"", ".", "..", "a\\b", "a/b", "\\a", "/a"}) {
        EXPECT_FALSE(isPlainFileName(name)) << name;
    }
    EXPECT_FALSE(isPlainFileName(std::string_view("a\0b", 3)));
}

}  // namespace
}  // namespace tandril::platform
