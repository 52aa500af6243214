// What the files of Windows add to the cases of every file system: the real disk.
#include "platform/windows/drive_files.h"

#include <gmock/gmock.h>
#include <windows.h>

#include "platform/fault.h"
#include "platform/temporary_names.h"
#include "platform/windows/wide.h"
#include "support/temporary_home.h"

namespace tandril::platform {
namespace {

using test::TemporaryHome;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::string_view storePath = "C:\\Vorn Tandril\\Harbrook.xml";
constexpr const char* realStorePath = "Vorn Tandril/Harbrook.xml";

class DriveFilesTest : public ::testing::Test {
  protected:
    std::wstring realStore() const { return toWide(home.pathOf(realStorePath)); }
    std::string faultOfReplace() {
        try {
            files.replace(storePath, "new", Durability::Durable);
        } catch (const Fault& fault) {
            return fault.what();
        }
        return "";
    }

    TemporaryHome home;
    DriveFiles files{toWide(home.path())};
};

TEST_F(DriveFilesTest, ThePathsLieBelowTheRoot) {
    home.write(realStorePath, "<harbrook/>");
    EXPECT_EQ(files.read(storePath), "<harbrook/>");
    files.createFolder("C:\\Vorn Tandril\\MasterData");
    EXPECT_TRUE(home.exists("Vorn Tandril/MasterData"));
}

TEST_F(DriveFilesTest, PathsMatchInAnyCase) {
    home.write(realStorePath, "<harbrook/>");
    EXPECT_EQ(files.read("c:\\VORN tandril\\harbrook.XML"), "<harbrook/>");
}

TEST(DriveTest, TheDriveIsTheMachinesOwn) {
    const DriveFiles files;
    EXPECT_TRUE(files.driveExists("C:"));
    EXPECT_TRUE(files.folderExists(files.systemFolder()));
    EXPECT_THAT(files.systemFolder(), ::testing::EndsWith("\\system32"));
}

TEST_F(DriveFilesTest, FaultsReadAsOnOtherSystems) {
    EXPECT_EQ(faultOfReplace(),
              "cannot write \"C:\\Vorn Tandril\\Harbrook.xml\": "
              "No such file or directory");
    home.makeFolder("Vorn Tandril");
    try {
        files.createFolder("C:\\Vorn Tandril");
        FAIL() << "the folder exists twice";
    } catch (const Fault& fault) {
        EXPECT_STREQ(fault.what(), "cannot create the folder \"C:\\Vorn Tandril\": File exists");
    }
}

TEST_F(DriveFilesTest, AWriteProtectedFileIsNotReplaced) {
    home.write(realStorePath, "old");
    ::SetFileAttributesW(realStore().c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_THAT(faultOfReplace(), HasSubstr("Permission denied"));
    EXPECT_EQ(files.read(storePath), "old");
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
    ::SetFileAttributesW(realStore().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(DriveFilesTest, AFileThatSomebodyHoldsOpenStaysAsItIs) {
    home.write(realStorePath, "old");
    const HANDLE holder = ::CreateFileW(realStore().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(holder, INVALID_HANDLE_VALUE);
    EXPECT_NE(faultOfReplace(), "");
    ::CloseHandle(holder);
    EXPECT_EQ(files.read(storePath), "old");
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
    EXPECT_EQ(faultOfReplace(), "");
}

TEST_F(DriveFilesTest, ReplaceRemovesEverythingThatKilledProcessesLeft) {
    home.write(realStorePath, "old");
    for (int number = 1; number <= temporaryNames; ++number) {
        home.write("Vorn Tandril/" + temporaryName("Harbrook.xml", number), "half");
    }
    home.write("Vorn Tandril/" + temporaryName("Upload.xml", 1), "half");
    EXPECT_EQ(faultOfReplace(), "");
    EXPECT_THAT(home.names("Vorn Tandril"),
                ElementsAre(temporaryName("Upload.xml", 1), "Harbrook.xml"));
}

TEST_F(DriveFilesTest, ReplaceLeavesWhatALiveProcessIsWriting) {
    const std::string name = temporaryName("Harbrook.xml", 1);
    home.write(realStorePath, "old");
    const HANDLE writer =
        ::CreateFileW(toWide(home.pathOf("Vorn Tandril/" + name)).c_str(), GENERIC_WRITE | DELETE,
                      FILE_SHARE_READ, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    EXPECT_EQ(faultOfReplace(), "");
    EXPECT_EQ(files.read(storePath), "new");
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre(name, "Harbrook.xml"));
    ::CloseHandle(writer);
    EXPECT_EQ(faultOfReplace(), "");
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
}

TEST_F(DriveFilesTest, AFileIsReadWhileSomebodyAppendsToIt) {
    home.write(realStorePath, "old");
    const HANDLE writer = ::CreateFileW(realStore().c_str(), FILE_APPEND_DATA,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    EXPECT_EQ(files.read(storePath), "old");
    ::CloseHandle(writer);
}

// To Windows these would be a device, another stream of the file, and a name without its dot.
TEST_F(DriveFilesTest, NamesAreTakenToTheLetter) {
    home.makeFolder("Vorn Tandril");
    EXPECT_FALSE(files.fileExists("C:\\Vorn Tandril\\NUL"));
    home.write(realStorePath, "kept");
    EXPECT_FALSE(files.fileExists("C:\\Vorn Tandril\\Harbrook.xml:stream"));
    EXPECT_THROW(files.replace("C:\\Vorn Tandril\\Harbrook.xml:stream", "x", Durability::Relaxed),
                 Fault);
    EXPECT_FALSE(files.fileExists("C:\\Vorn Tandril\\Harbrook.xml."));
    EXPECT_EQ(files.read(storePath), "kept");
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
}

TEST_F(DriveFilesTest, CharactersThatTheCodePageLacksBecomeQuestionMarks) {
    if (::GetACP() == CP_UTF8) GTEST_SKIP() << "the code page of this machine has them all";
    EXPECT_EQ(files.encodeAnsi("a\xF0\x90\x8D\x88z"), "a??z");
    // One that has a look-alike in the code page, but is another character.
    EXPECT_EQ(files.encodeAnsi("\xE2\x88\x9E"), "?");
}

TEST_F(DriveFilesTest, ALargeFileComesBackWhole) {
    const std::string large(5'000'000, 'x');
    home.makeFolder("Vorn Tandril");
    files.replace(storePath, large, Durability::Durable);
    files.append(storePath, large);
    EXPECT_TRUE(files.read(storePath) == large + large);
}

}  // namespace
}  // namespace tandril::platform
