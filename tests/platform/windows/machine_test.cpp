// A home on a machine that has a registry and a drive of its own.
#include "platform/machine.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "platform/fault.h"
#include "platform/utf8_path.h"
#include "support/temporary_home.h"

namespace tandril::platform {
namespace {

using ::testing::IsEmpty;
using ::testing::MatchesRegex;

TEST(MachineTest, AHomeIsDriveCAndHoldsTheRegistry) {
    const test::TemporaryHome home;
    const auto owned = openMachine(home.path());
    const Machine machine = owned->machine();
    EXPECT_TRUE(machine.files.driveExists("C:"));
    EXPECT_FALSE(machine.registry.keyExists(RegistryRoot::LocalMachine, "SOFTWARE"));
    machine.files.createFolder("C:\\Vorn Tandril");
    machine.registry.createKey(RegistryRoot::LocalMachine, "SOFTWARE");
    machine.registry.flush(Durability::Durable);
    EXPECT_TRUE(home.exists("Vorn Tandril"));
    EXPECT_TRUE(home.exists("registry.reg"));
}

TEST(MachineTest, NothingOfTheMachineShowsInAHome) {
    const test::TemporaryHome home;
    const auto owned = openMachine(home.path());
    const Machine machine = owned->machine();
    EXPECT_EQ(machine.files.systemFolder(), "C:\\WINDOWS\\system32");
    EXPECT_EQ(machine.files.encodeAnsi("Höhe ポ"), "Höhe ポ");
    EXPECT_EQ(machine.files.decodeAnsi("Höhe ポ"), "Höhe ポ");
    EXPECT_EQ(machine.files.typeDescription("C:\\a.MDB"), "MDB File");
    EXPECT_THAT(machine.clock.generalDate(),
                MatchesRegex("\\d\\d/\\d\\d/\\d\\d\\d\\d \\d\\d:\\d\\d:\\d\\d"));
}

TEST(MachineTest, ABackslashOrASlashAtTheEndOfAHomeMakesNoDifference) {
    const test::TemporaryHome home;
    home.makeFolder("Vorn Tandril");
    for (const char* end : {"\\", "/", "/./", "\\x\\.."}) {
        const auto owned = openMachine(home.path() + end);
        EXPECT_TRUE(owned->machine().files.folderExists("C:\\Vorn Tandril")) << end;
    }
}

TEST(MachineTest, AMissingHomeIsNoFaultAndIsNotCreated) {
    const test::TemporaryHome parent;
    const auto owned = openMachine(parent.pathOf("none"));
    EXPECT_FALSE(owned->machine().files.driveExists("C:"));
    EXPECT_FALSE(owned->machine().registry.keyExists(RegistryRoot::LocalMachine, "SOFTWARE"));
    EXPECT_THAT(parent.names(), IsEmpty());
}

TEST(MachineTest, WithoutAHomeTheMachineIsWindowsItself) {
    const auto owned = openMachine("");
    EXPECT_TRUE(owned->machine().files.driveExists("C:"));
    EXPECT_TRUE(owned->machine().registry.keyExists(RegistryRoot::LocalMachine,
                                                    "SOFTWARE\\Microsoft\\Windows"));
}

TEST(HostPathTest, IsOfTheDriveOrOfTheHome) {
    const test::TemporaryHome home;
    EXPECT_EQ(hostPath("", "C:\\a\\b.txt"), "C:\\a\\b.txt");
    EXPECT_EQ(hostPath(home.path(), "C:\\a\\b.txt"),
              utf8FromPath(pathFromUtf8(home.pathOf("a/b.txt")).make_preferred()));
    EXPECT_THROW((void)hostPath("", "C:\\..\\b.txt"), Fault);
}

}  // namespace
}  // namespace tandril::platform
