#include "host/home_lock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "platform/fault.h"
#include "support/temporary_home.h"

namespace tandril::host {
namespace {

using testing::HasSubstr;

std::string faultOf(const std::string& home) {
    try {
        const HomeLock lock(home);
    } catch (const Fault& fault) {
        return fault.what();
    }
    return "no fault";
}

TEST(HomeLock, SecondHolderIsToldWhoTheFirstIs) {
    const test::TemporaryHome home;
    const HomeLock lock(home.path());
    EXPECT_EQ(faultOf(home.path()), "the home " + home.path() + " is already served by process " +
                                        std::to_string(::getpid()));
}

TEST(HomeLock, IsFreeAgainAfterItsHolder) {
    const test::TemporaryHome home;
    { const HomeLock lock(home.path()); }
    EXPECT_EQ(home.read("host.lock"), "");
    EXPECT_EQ(faultOf(home.path()), "no fault");
}

TEST(HomeLock, FileLeftByAKilledHolderDoesNotMatter) {
    const test::TemporaryHome home;
    home.write("host.lock", "99999999\nand more\n");
    const HomeLock lock(home.path());
    EXPECT_EQ(home.read("host.lock"), std::to_string(::getpid()) + "\n");
}

TEST(HomeLock, TwoHomesAreTwoLocks) {
    const test::TemporaryHome one;
    const test::TemporaryHome other;
    const HomeLock lock(one.path());
    EXPECT_EQ(faultOf(other.path()), "no fault");
}

TEST(HomeLock, MissingHomeIsAFaultAndStaysMissing) {
    const test::TemporaryHome home;
    EXPECT_EQ(faultOf(home.pathOf("nowhere")), "there is no home folder " + home.pathOf("nowhere"));
    EXPECT_FALSE(home.exists("nowhere"));
}

TEST(HomeLock, LockFileThatCannotBeMadeIsAFault) {
    const test::TemporaryHome home;
    home.makeFolder("host.lock");
    EXPECT_THAT(faultOf(home.path()), HasSubstr("cannot create " + home.pathOf("host.lock")));
}

}  // namespace
}  // namespace tandril::host
