// The shell on the machine's own programs.
#include "platform/windows/windows_shell.h"

#include <gmock/gmock.h>
#include <windows.h>

#include <filesystem>

#include "platform/windows/wide.h"
#include "support/temporary_home.h"

namespace tandril::platform {
namespace {

class ShellTest : public ::testing::Test {
  protected:
    bool waitFor(const char* relative) const {
        for (int i = 0; i < 6000 && !home.exists(relative); ++i) ::Sleep(10);
        return home.exists(relative);
    }

    test::TemporaryHome home;
    DriveFiles files{toWide(home.path())};
    WindowsShell shell{files};
};

TEST_F(ShellTest, StartsTheProgramInItsFolder) {
    home.write("MasterData/Parts.bat", "@echo off\r\necho here> started.txt\r\n");
    EXPECT_TRUE(shell.start("C:\\MasterData", "Parts.bat"));
    EXPECT_TRUE(waitFor("MasterData/started.txt"));
}

TEST_F(ShellTest, WhatCannotBeStartedIsFalse) {
    home.write("MasterData/Parts.exe", "no program");
    home.makeFolder("MasterData/Folder.exe");
    EXPECT_FALSE(shell.start("C:\\MasterData", "Parts.exe"));
    EXPECT_FALSE(shell.start("C:\\MasterData", "None.exe"));
    EXPECT_FALSE(shell.start("C:\\MasterData", "Folder.exe"));
    EXPECT_FALSE(shell.start("C:\\None", "Parts.exe"));
}

TEST_F(ShellTest, OnlyAPlainNameIsStarted) {
    home.write("Parts.bat", "@echo off\r\n");
    home.makeFolder("MasterData");
    EXPECT_FALSE(shell.start("C:\\MasterData", "..\\Parts.bat"));
    EXPECT_FALSE(shell.start("C:\\MasterData", "../Parts.bat"));
    EXPECT_FALSE(shell.start("C:\\MasterData", "C:\\Parts.bat"));
    EXPECT_FALSE(shell.start("C:\\MasterData", ""));
}

// Where there is no desktop the message must not wait for somebody to close it. On a desktop this
// case has to be left out: the box is there to be seen.
TEST_F(ShellTest, AMessageWithoutADesktopReturns) {
    if (::GetEnvironmentVariableW(L"TANDRIL_HEADLESS", nullptr, 0) == 0) {
        GTEST_SKIP() << "there may be a desktop";
    }
    shell.showCritical("Title", "Prompt");
    EXPECT_EQ(::FindWindowW(nullptr, L"Title"), nullptr);
}

}  // namespace
}  // namespace tandril::platform
