#include "platform/machine.h"

#include <gmock/gmock.h>
#include <stdlib.h>

#include <ctime>
#include <filesystem>
#include <optional>

#include "platform/fault.h"
#include "platform/linux/wall_clock.h"
#include "support/temporary_home.h"

namespace tandril::platform {
namespace {

using ::testing::IsEmpty;
using ::testing::MatchesRegex;

// A variable of the environment, set for a while (nullptr: unset).
class Variable {
  public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* before = ::getenv(name)) before_ = before;
        set(value);
    }
    ~Variable() { set(before_ ? before_->c_str() : nullptr); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    void set(const char* value) {
        if (value == nullptr) {
            ::unsetenv(name_);
        } else {
            ::setenv(name_, value, 1);
        }
    }

    const char* name_;
    std::optional<std::string> before_;
};

TEST(MachineTest, TheHomeIsDriveCAndHoldsTheRegistry) {
    const test::TemporaryHome home;
    const auto owned = openMachine(home.path());
    const Machine machine = owned->machine();
    EXPECT_TRUE(machine.files.driveExists("C:"));
    machine.files.createFolder("C:\\Vorn Tandril");
    machine.registry.createKey(RegistryRoot::LocalMachine, "SOFTWARE");
    machine.registry.flush(Durability::Durable);
    EXPECT_TRUE(home.exists("Vorn Tandril"));
    EXPECT_TRUE(home.exists("registry.reg"));
}

TEST(MachineTest, AMissingHomeIsNoFaultAndIsNotCreated) {
    const test::TemporaryHome parent;
    const auto owned = openMachine(parent.pathOf("none"));
    EXPECT_FALSE(owned->machine().files.driveExists("C:"));
    EXPECT_FALSE(owned->machine().registry.keyExists(RegistryRoot::LocalMachine, "SOFTWARE"));
    EXPECT_THAT(parent.names(), IsEmpty());
}

TEST(MachineTest, AHomeWithoutANameIsAFault) {
    EXPECT_THROW((void)openMachine(""), Fault);
}

TEST(MachineTest, ARelativeHomeStaysWhereItIs) {
    const test::TemporaryHome home;
    home.makeFolder("here/demo");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(home.pathOf("here"));
    const auto owned = openMachine("demo");
    std::filesystem::current_path(before);
    EXPECT_TRUE(owned->machine().files.driveExists("C:"));
}

TEST(DefaultHomeTest, TandrilHomeComesFirstAndIsNotCreated) {
    const test::TemporaryHome parent;
    const Variable named("TANDRIL_HOME", parent.pathOf("mine").c_str());
    const Variable data("XDG_DATA_HOME", parent.pathOf("data").c_str());
    EXPECT_EQ(defaultHome(), parent.pathOf("mine"));
    EXPECT_THAT(parent.names(), IsEmpty());
}

TEST(DefaultHomeTest, TheDataFolderComesNextAndIsCreated) {
    const test::TemporaryHome parent;
    const Variable named("TANDRIL_HOME", "");
    const Variable data("XDG_DATA_HOME", parent.pathOf("data").c_str());
    EXPECT_EQ(defaultHome(), parent.pathOf("data/tandril"));
    EXPECT_EQ(defaultHome(), parent.pathOf("data/tandril"));
    EXPECT_TRUE(parent.exists("data/tandril"));
}

TEST(DefaultHomeTest, TheUsersFolderComesLast) {
    const test::TemporaryHome parent;
    const Variable named("TANDRIL_HOME", nullptr);
    const Variable data("XDG_DATA_HOME", "relative");
    const Variable user("HOME", parent.path().c_str());
    EXPECT_EQ(defaultHome(), parent.pathOf(".local/share/tandril"));
    EXPECT_TRUE(parent.exists(".local/share/tandril"));
}

TEST(DefaultHomeTest, NoPlaceIsAFault) {
    const Variable named("TANDRIL_HOME", nullptr);
    const Variable data("XDG_DATA_HOME", nullptr);
    const Variable user("HOME", nullptr);
    EXPECT_THROW((void)defaultHome(), Fault);
}

TEST(DefaultHomeTest, AFolderThatCannotBeCreatedIsAFault) {
    const test::TemporaryHome parent;
    parent.write("file", "");
    const Variable named("TANDRIL_HOME", nullptr);
    const Variable data("XDG_DATA_HOME", parent.pathOf("file").c_str());
    EXPECT_THROW((void)defaultHome(), Fault);
}

TEST(WallClockTest, TheGeneralDateIsDayMonthYearAndTwentyFourHours) {
    std::tm time{};
    time.tm_year = 126;
    time.tm_mon = 10;
    time.tm_mday = 5;
    time.tm_hour = 21;
    time.tm_min = 9;
    time.tm_sec = 3;
    EXPECT_EQ(formatGeneralDate(time), "05/11/2026 21:09:03");
    EXPECT_THAT(WallClock().generalDate(),
                MatchesRegex("[0-9]{2}/[0-9]{2}/[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2}"));
}

}  // namespace
}  // namespace tandril::platform
