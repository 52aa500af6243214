#include "platform/linux/shell.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <iostream>
#include <sstream>
#include <thread>

#include "support/temporary_home.h"

namespace tandril::platform {
namespace {

constexpr std::string_view folderPath = "C:\\Vorn Tandril\\MasterData";

bool waitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

// Whether this process has no children, not even one that ended unnoticed. Looks, and takes none.
bool hasNoChildren() {
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD;
}

class ShellTest : public ::testing::Test {
  protected:
    void program(const std::string& name, std::string_view text, mode_t mode = 0755) const {
        const std::string path = "Vorn Tandril/MasterData/" + name;
        home.write(path, text);
        ASSERT_EQ(::chmod(home.pathOf(path).c_str(), mode), 0);
    }
    std::string output(const std::string& name) const {
        return home.read("Vorn Tandril/MasterData/" + name);
    }

    test::TemporaryHome home;
    DesktopShell shell{home.path()};
};

TEST_F(ShellTest, StartsTheProgramInItsFolder) {
    program("data.exe", "#!/bin/sh\npwd > out.tmp\nmv out.tmp out.txt\n");
    EXPECT_TRUE(shell.start(folderPath, "data.exe"));
    ASSERT_TRUE(waitUntil([&] { return output("out.txt") != "(no file)"; }));
    EXPECT_EQ(output("out.txt"), home.pathOf("Vorn Tandril/MasterData") + "\n");
    EXPECT_TRUE(waitUntil(hasNoChildren));
}

TEST_F(ShellTest, DoesNotWaitForTheProgramAndLeavesNoZombie) {
    program("data.exe", "#!/bin/sh\nwhile [ ! -e go ]; do sleep 0.01; done\n");
    EXPECT_TRUE(shell.start(folderPath, "data.exe"));
    EXPECT_FALSE(hasNoChildren());
    home.write("Vorn Tandril/MasterData/go", "");
    EXPECT_TRUE(waitUntil(hasNoChildren));
}

TEST_F(ShellTest, TheProgramHasNoPartOfTheStandardStreams) {
    program("data.exe",
            "#!/bin/sh\nstreams=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\n"
            "echo \"$streams\" > out.tmp\nmv out.tmp out.txt\n");
    EXPECT_TRUE(shell.start(folderPath, "data.exe"));
    ASSERT_TRUE(waitUntil([&] { return output("out.txt") != "(no file)"; }));
    EXPECT_EQ(output("out.txt"), "/dev/null\n/dev/null\n/dev/null\n");
    EXPECT_TRUE(waitUntil(hasNoChildren));
}

TEST_F(ShellTest, WhatCannotBeStartedIsFalse) {
    program("plain.exe", "#!/bin/sh\n", 0644);
    program("other.exe", "MZ no program of this system");
    program("lost.exe", "#!/no/such/interpreter\n");
    home.makeFolder("Vorn Tandril/MasterData/folder.exe");
    for (const char* name :
         {"none.exe", "plain.exe", "other.exe", "lost.exe", "folder.exe", "", ".", ".."}) {
        EXPECT_FALSE(shell.start(folderPath, name)) << name;
    }
    EXPECT_TRUE(hasNoChildren());
}

TEST_F(ShellTest, OnlyAPlainNameIsStarted) {
    program("data.exe", "#!/bin/sh\n");
    for (const char* name : {"..\\MasterData\\data.exe", "../MasterData/data.exe", "./data.exe",
                             ".\\data.exe", "data.exe -x", "\"data.exe\""}) {
        EXPECT_FALSE(shell.start(folderPath, name)) << name;
    }
    EXPECT_FALSE(shell.start("C:\\Vorn Tandril\\..\\Vorn Tandril\\MasterData", "data.exe"));
    EXPECT_FALSE(shell.start(folderPath, std::string_view("data.exe\0x", 10)));
    EXPECT_TRUE(hasNoChildren());
}

TEST_F(ShellTest, CriticalMessagesGoToStandardError) {
    std::ostringstream shown;
    std::streambuf* const before = std::cerr.rdbuf(shown.rdbuf());
    shell.showCritical("Master data", "The archive is damaged.");
    std::cerr.rdbuf(before);
    EXPECT_EQ(shown.str(), "Master data: The archive is damaged.\n");
}

}  // namespace
}  // namespace tandril::platform
