// What the files of a home folder add to the cases of every file system: the real disk.
#include "platform/linux/home_files.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/stat.h>

#include <array>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <set>

#include "platform/fault.h"
#include "platform/linux/descriptor.h"
#include "platform/temporary_names.h"
#include "support/child_process.h"
#include "support/temporary_home.h"

namespace tandril::platform {
namespace {

using test::ChildEnd;
using test::endedByFault;
using test::Hardship;
using test::runInChild;
using test::TemporaryHome;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSubsetOf;

constexpr std::string_view storePath = "C:\\Vorn Tandril\\Harbrook.xml";
constexpr const char* realStorePath = "Vorn Tandril/Harbrook.xml";
constexpr const char* firstTemporary = ".tandril-Harbrook.xml-1.tmp";
constexpr Hardship fullDisk{.fileSizeLimit = 4096};
constexpr Hardship killedWhenFull{.fileSizeLimit = 4096, .killedAtLimit = true};
constexpr Hardship asOrdinaryUser{.ordinaryUser = true};

class HomeFilesTest : public ::testing::Test {
  protected:
    mode_t mode() const {
        struct stat status {};
        EXPECT_EQ(::stat(home.pathOf(realStorePath).c_str(), &status), 0);
        return status.st_mode & 07777;
    }
    void setMode(const char* relative, mode_t mode) const {
        ASSERT_EQ(::chmod(home.pathOf(relative).c_str(), mode), 0);
    }
    int replace(std::string_view bytes) {
        files.replace(storePath, bytes, Durability::Durable);
        return 0;
    }
    int append(std::string_view bytes) {
        files.append(storePath, bytes);
        return 0;
    }

    TemporaryHome home;
    HomeFiles files{home.path()};
    const std::string old = std::string(3000, 'o');
    const std::string large = std::string(100'000, 'n');
};

TEST_F(HomeFilesTest, ThePathsLieInTheHome) {
    home.write(realStorePath, "<harbrook/>");
    EXPECT_EQ(files.read(storePath), "<harbrook/>");
    files.createFolder("C:\\Vorn Tandril\\MasterData");
    EXPECT_TRUE(home.exists("Vorn Tandril/MasterData"));
    EXPECT_EQ(files.realPath(storePath), home.pathOf(realStorePath));
}

TEST_F(HomeFilesTest, WithoutTheHomeThereIsNoDrive) {
    HomeFiles lost(home.pathOf("none"));
    EXPECT_FALSE(lost.driveExists("C:"));
    EXPECT_THROW(lost.createFolder("C:\\Vorn Tandril"), Fault);
    EXPECT_THAT(home.names(), IsEmpty());
    home.write("file", "");
    EXPECT_FALSE(HomeFiles(home.pathOf("file")).driveExists("C:"));
}

TEST_F(HomeFilesTest, FaultsNameTheAttemptThePathAndTheCause) {
    try {
        (void)files.read(storePath);
        FAIL() << "no fault";
    } catch (const Fault& fault) {
        EXPECT_EQ(std::string(fault.what()),
                  "cannot read \"C:\\Vorn Tandril\\Harbrook.xml\": No such file or directory");
    }
}

TEST_F(HomeFilesTest, ReplaceKeepsThePermissions) {
    home.write(realStorePath, old);
    setMode(realStorePath, 0640);
    replace("new");
    EXPECT_EQ(mode(), 0640u);
}

TEST_F(HomeFilesTest, ANewFileHasTheUsersUsualPermissions) {
    home.makeFolder("Vorn Tandril");
    const mode_t before = ::umask(0027);
    replace("new");
    ::umask(before);
    EXPECT_EQ(mode(), 0640u);
}

TEST_F(HomeFilesTest, AWriteProtectedFileIsNotReplaced) {
    home.write(realStorePath, old);
    setMode("", 0777);
    setMode("Vorn Tandril", 0777);
    setMode(realStorePath, 0444);
    EXPECT_EQ(runInChild(asOrdinaryUser, [&] { return replace("new"); }).exitStatus, endedByFault);
    EXPECT_EQ(home.read(realStorePath), old);
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
}

TEST_F(HomeFilesTest, AWriteProtectedFolderIsAFault) {
    home.write(realStorePath, old);
    setMode(realStorePath, 0666);
    setMode("Vorn Tandril", 0555);
    EXPECT_EQ(runInChild(asOrdinaryUser, [&] { return replace("new"); }).exitStatus, endedByFault);
    EXPECT_EQ(home.read(realStorePath), old);
    setMode("Vorn Tandril", 0755);
}

TEST_F(HomeFilesTest, AFullDiskLeavesTheOldFileAndNothingElse) {
    home.write(realStorePath, old);
    EXPECT_EQ(runInChild(fullDisk, [&] { return replace(large); }).exitStatus, endedByFault);
    EXPECT_EQ(home.read(realStorePath), old);
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
}

TEST_F(HomeFilesTest, AKillInTheMiddleLeavesTheOldFile) {
    home.write(realStorePath, old);
    const ChildEnd end = runInChild(killedWhenFull, [&] { return replace(large); });
    EXPECT_EQ(end.signal, SIGXFSZ);
    EXPECT_EQ(home.read(realStorePath), old);
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre(firstTemporary, "Harbrook.xml"));
    replace("new");
    EXPECT_EQ(home.read(realStorePath), "new");
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
}

TEST_F(HomeFilesTest, ReplaceRemovesEverythingThatKilledProcessesLeft) {
    home.write(realStorePath, old);
    for (int number = 1; number <= temporaryNames; ++number) {
        home.write("Vorn Tandril/" + temporaryName("Harbrook.xml", number), "half");
    }
    home.write("Vorn Tandril/" + temporaryName("Upload.xml", 1), "half");
    replace("new");
    EXPECT_THAT(home.names("Vorn Tandril"),
                ElementsAre(temporaryName("Upload.xml", 1), "Harbrook.xml"));
}

TEST_F(HomeFilesTest, ReplaceLeavesWhatALiveProcessIsWriting) {
    const std::string path = home.pathOf(std::string("Vorn Tandril/") + firstTemporary);
    home.write(realStorePath, old);
    home.write(std::string("Vorn Tandril/") + firstTemporary, "half");
    {
        const Descriptor writer(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
        ASSERT_EQ(::flock(writer.get(), LOCK_EX | LOCK_NB), 0);
        replace("new");
        EXPECT_EQ(home.read(realStorePath), "new");
        EXPECT_EQ(home.read(std::string("Vorn Tandril/") + firstTemporary), "half");
        EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre(firstTemporary, "Harbrook.xml"));
    }
    replace("newer");
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
}

TEST_F(HomeFilesTest, ReplaceGoesOnWhereNoneOfItsNamesIsFree) {
    home.write("elsewhere", "kept");
    for (int number = 1; number <= temporaryNames; ++number) {
        const std::string name = "Vorn Tandril/" + temporaryName("Harbrook.xml", number);
        if (number % 2 == 0) {
            home.makeFolder(name);
        } else {
            home.makeFolder("Vorn Tandril");
            std::filesystem::create_symlink(home.pathOf("elsewhere"), home.pathOf(name));
        }
    }
    const auto before = home.names("Vorn Tandril");
    replace("new");
    EXPECT_EQ(home.read(realStorePath), "new");
    EXPECT_EQ(home.read("elsewhere"), "kept");
    EXPECT_EQ(home.names("Vorn Tandril").size(), before.size() + 1);
}

// Every process may be killed at any moment; the others go on, and what it left goes with the next
// save.
TEST_F(HomeFilesTest, KilledProcessesDoNotDisturbOthers) {
    home.write(realStorePath, old);
    const auto writeForEver = [&] {
        for (;;) files.replace(storePath, large, Durability::Relaxed);
        return 0;
    };
    for (int run = 0; run < 15; ++run) {
        const pid_t killed[] = {test::startInChild({}, writeForEver),
                                test::startInChild({}, writeForEver)};
        for (int i = 0; i < 20; ++i) files.replace(storePath, old, Durability::Relaxed);
        for (const pid_t child : killed) {
            ::kill(child, SIGKILL);
            EXPECT_EQ(test::waitFor(child).signal, SIGKILL);
        }
        replace("new");
        ASSERT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
    }
}

// The names of the files that a folder got since the watch began.
std::set<std::string> newNames(const Descriptor& watch) {
    std::set<std::string> names;
    std::array<char, 16384> events{};
    ssize_t size = 0;
    while ((size = ::read(watch.get(), events.data(), events.size())) > 0) {
        for (ssize_t at = 0; at < size;) {
            inotify_event event{};
            std::memcpy(&event, events.data() + at, sizeof event);
            names.insert(events.data() + at + sizeof event);
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    return names;
}

// Under any other name nobody would find what a killed process left.
TEST_F(HomeFilesTest, ProcessesThatReplaceTogetherKeepToTheKnownNames) {
    home.write(realStorePath, old);
    std::set<std::string> known;
    for (int number = 1; number <= temporaryNames; ++number) {
        known.insert(temporaryName("Harbrook.xml", number));
    }
    const Descriptor watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    ASSERT_GE(::inotify_add_watch(watch.get(), home.pathOf("Vorn Tandril").c_str(), IN_CREATE), 0);
    const auto replaceOften = [&] {
        for (int i = 0; i < 1000; ++i) files.replace(storePath, old, Durability::Relaxed);
        return 0;
    };
    std::array<pid_t, 3> children{};
    for (pid_t& child : children) child = test::startInChild({}, replaceOften);
    for (const pid_t child : children) EXPECT_EQ(test::waitFor(child).exitStatus, 0);
    const std::set<std::string> used = newNames(watch);
    EXPECT_THAT(used, IsSubsetOf(known));
    EXPECT_THAT(used, Contains(firstTemporary));
}

TEST_F(HomeFilesTest, AFailedAppendLeavesTheFileAsLongAsItWas) {
    home.write(realStorePath, old);
    EXPECT_EQ(runInChild(fullDisk, [&] { return append(large); }).exitStatus, endedByFault);
    EXPECT_EQ(home.read(realStorePath), old);
    EXPECT_EQ(runInChild(fullDisk, [&] { return append("fits"); }).exitStatus, 0);
    EXPECT_EQ(home.read(realStorePath), old + "fits");
}

TEST_F(HomeFilesTest, ReadersSeeTheFileWholeWhileProcessesReplaceIt) {
    const std::string one(70'000, '1');
    const std::string two(50'000, '2');
    home.write(realStorePath, one);
    const auto writeOften = [&](const std::string& bytes) {
        return test::startInChild({}, [&] {
            for (int i = 0; i < 200; ++i) files.replace(storePath, bytes, Durability::Relaxed);
            return 0;
        });
    };
    const pid_t children[] = {writeOften(one), writeOften(two), writeOften(one), writeOften(two)};
    for (int i = 0; i < 200; ++i) {
        const std::string seen = files.read(storePath);
        ASSERT_TRUE(seen == one || seen == two) << "after " << i << " looks";
    }
    for (const pid_t child : children) EXPECT_EQ(test::waitFor(child).exitStatus, 0);
    EXPECT_THAT(home.names("Vorn Tandril"), ElementsAre("Harbrook.xml"));
}

TEST_F(HomeFilesTest, PipesAreRefusedRatherThanWaitedFor) {
    home.makeFolder("Vorn Tandril");
    ASSERT_EQ(::mkfifo(home.pathOf(realStorePath).c_str(), 0666), 0);
    EXPECT_THROW((void)files.read(storePath), Fault);
    EXPECT_THROW(append("x"), Fault);
}

TEST_F(HomeFilesTest, FileNamesLeaveOutWhatNoPathCanName) {
    home.write("Vorn Tandril/a\\b.mdb", "");
    home.write("Vorn Tandril/c.mdb", "");
    std::filesystem::create_symlink("nowhere", home.pathOf("Vorn Tandril/d.mdb"));
    EXPECT_THAT(files.fileNames("C:\\Vorn Tandril"), ElementsAre("c.mdb"));
}

TEST_F(HomeFilesTest, PlainTextFilesAreUtf8) {
    const std::string text =
        "Gr\xC3\xB6\xC3\x9F"
        "e \xE2\x82\xAC";
    EXPECT_EQ(files.encodeAnsi(text), text);
    EXPECT_EQ(files.decodeAnsi(text), text);
    EXPECT_EQ(files.systemFolder(), "C:\\WINDOWS\\system32");
}

}  // namespace
}  // namespace tandril::platform
