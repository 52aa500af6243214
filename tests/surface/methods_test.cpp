#include "component/methods.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/read_file.h"

namespace tandril {
namespace {

using testing::SizeIs;

// The names, slots, parameters and kinds are the contract with every caller and never change.
TEST(Methods, TableIsThePublishedOne) {
    std::string table;
    for (const Method& method : methods()) {
        table += std::to_string(method.slot) + ' ' + signature(method) + '\n';
    }
    EXPECT_EQ(table, test::readFile(TANDRIL_SURFACE_TESTS "/methods.txt"));
}

TEST(Methods, SlotsFollowEachOther) {
    int slot = 0;
    for (const Method& method : methods()) {
        EXPECT_EQ(method.slot, ++slot) << method.name;
    }
    EXPECT_THAT(methods(), SizeIs(57));
}

TEST(Methods, FindsAMethodInAnyCase) {
    for (const char* name : {"StroreErrorOrders", "stroreerrororders", "STROREERRORORDERS"}) {
        const Method* method = findMethod(name);
        ASSERT_NE(method, nullptr) << name;
        EXPECT_EQ(method->slot, 39);
    }
}

TEST(Methods, FindsNoMethodByPartOfAName) {
    for (const char* name : {"", "Strore", "Get_Error ", "Get_ErrorX", "Get_Err\xC3\x96r"}) {
        EXPECT_EQ(findMethod(name), nullptr) << name;
    }
}

}  // namespace
}  // namespace tandril
