// What every file system has to keep to: the same cases run on the fake and on the real one.
#include "platform/file_system.h"

#include <gmock/gmock.h>

#include <functional>

#include "platform/fault.h"
#include "real_ports.h"
#include "support/files_wrapper.h"
#include "support/memory_files.h"

namespace tandril::test {
namespace {

using platform::Durability;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct InMemory {
    MemoryFiles files;
};

struct Wrapped {
    MemoryFiles target;
    FaultyFiles files{target};
};

template <typename Machine>
class FileSystemTest : public ::testing::Test {
  protected:
    void SetUp() override {
        files().createFolder("C:\\Vorn Tandril");
        files().createFolder("C:\\Vorn Tandril\\MasterData");
    }
    platform::FileSystem& files() { return machine_.files; }
    void write(std::string_view path, std::string_view bytes) {
        files().replace(path, bytes, Durability::Relaxed);
    }

  private:
    Machine machine_;
};

using Machines = ::testing::Types<InMemory, RealFiles, Wrapped>;
TYPED_TEST_SUITE(FileSystemTest, Machines);

constexpr std::string_view logPath = "C:\\Vorn Tandril\\log.txt";

constexpr std::string_view storePath = "C:\\Vorn Tandril\\Harbrook.xml";

// Paths that might lead out of drive "C:", or that are none.
const char* const strayPaths[] = {
    "C:\\..\\x",
    "C:\\Vorn Tandril\\..\\..\\x",
    "C:\\Vorn Tandril/x",
    "C:\\.\\x",
    "C:\\a\\\\b",
    "Vorn Tandril",
    "\\Vorn Tandril",
    "D:\\x",
    "C:x",
    "",
    "/etc/passwd",
    "C:/Vorn Tandril",
    "C:\\\\server\\x",
};

TYPED_TEST(FileSystemTest, OnlyDriveCExists) {
    EXPECT_TRUE(this->files().driveExists("C:"));
    EXPECT_TRUE(this->files().driveExists("c:"));
    EXPECT_FALSE(this->files().driveExists("D:"));
    EXPECT_FALSE(this->files().driveExists("C:\\Vorn Tandril"));
    EXPECT_FALSE(this->files().driveExists(""));
}

TYPED_TEST(FileSystemTest, ReplacesFilesTogether) {
    this->write(logPath, "old log");
    const platform::NewContent both[] = {{logPath, "new log"}, {storePath, "new store"}};
    this->files().replaceTogether(both);
    EXPECT_EQ(this->files().read(logPath), "new log");
    EXPECT_EQ(this->files().read(storePath), "new store");
    this->files().replaceTogether({});
}

TYPED_TEST(FileSystemTest, AFileIsReplacedPieceByPiece) {
    const platform::NewContent store[] = {{storePath, platform::Content([](const auto& sink) {
                                               sink("one ");
                                               sink("");
                                               sink("two");
                                           })}};
    this->files().replaceTogether(store);
    EXPECT_EQ(this->files().read(storePath), "one two");
}

TYPED_TEST(FileSystemTest, AFileStaysWhenItsPiecesEndEarly) {
    this->write(storePath, "old store");
    const platform::NewContent store[] = {{storePath, platform::Content([](const auto& sink) {
                                               sink("new ");
                                               throw Fault("no more");
                                           })}};
    EXPECT_THROW(this->files().replaceTogether(store), Fault);
    EXPECT_EQ(this->files().read(storePath), "old store");
    EXPECT_THAT(this->files().fileNames("C:\\Vorn Tandril"), testing::ElementsAre("Harbrook.xml"));
}

TYPED_TEST(FileSystemTest, ReplacesNoFileWhenOneCannotBe) {
    this->write(logPath, "old log");
    const platform::NewContent both[] = {{logPath, "new log"},
                                         {"C:\\Vorn Tandril\\MasterData", "x"}};
    EXPECT_THROW(this->files().replaceTogether(both), Fault);
    EXPECT_EQ(this->files().read(logPath), "old log");
}

TYPED_TEST(FileSystemTest, TellsFilesFromFolders) {
    this->write(logPath, "");
    EXPECT_TRUE(this->files().fileExists(logPath));
    EXPECT_FALSE(this->files().folderExists(logPath));
    EXPECT_TRUE(this->files().folderExists("C:\\Vorn Tandril"));
    EXPECT_TRUE(this->files().folderExists("C:\\Vorn Tandril\\"));
    EXPECT_FALSE(this->files().fileExists("C:\\Vorn Tandril"));
    EXPECT_FALSE(this->files().fileExists("C:\\Vorn Tandril\\other.txt"));
    EXPECT_FALSE(this->files().folderExists("C:\\Vorn Tandril\\Other"));
}

TYPED_TEST(FileSystemTest, CreateFolderNeedsAParentAndAFreeName) {
    EXPECT_THROW(this->files().createFolder("C:\\A\\B"), Fault);
    EXPECT_THROW(this->files().createFolder("C:\\Vorn Tandril"), Fault);
    this->write(logPath, "");
    EXPECT_THROW(this->files().createFolder(logPath), Fault);
    this->files().createFolder("C:\\A");
    this->files().createFolder("C:\\A\\B");
    EXPECT_TRUE(this->files().folderExists("C:\\A\\B"));
}

TYPED_TEST(FileSystemTest, ReplaceMakesTheWholeContent) {
    const std::string bytes("all\r\nbytes \0\xFF", 13);
    this->files().replace(logPath, bytes, Durability::Durable);
    EXPECT_EQ(this->files().read(logPath), bytes);
    this->files().replace(logPath, "shorter", Durability::Relaxed);
    EXPECT_EQ(this->files().read(logPath), "shorter");
    this->files().replace(logPath, "", Durability::Relaxed);
    EXPECT_EQ(this->files().read(logPath), "");
    EXPECT_THAT(this->files().fileNames("C:\\Vorn Tandril"), ElementsAre("log.txt"));
}

TYPED_TEST(FileSystemTest, ReplaceNeedsAFolderAndAFile) {
    EXPECT_THROW(this->write("C:\\Other\\log.txt", "x"), Fault);
    EXPECT_THROW(this->write("C:\\Vorn Tandril\\MasterData", "x"), Fault);
    EXPECT_FALSE(this->files().folderExists("C:\\Other"));
    EXPECT_TRUE(this->files().folderExists("C:\\Vorn Tandril\\MasterData"));
    EXPECT_THAT(this->files().fileNames("C:\\Vorn Tandril"), IsEmpty());
}

TYPED_TEST(FileSystemTest, ReadOfWhatIsNoFileIsAFault) {
    EXPECT_THROW(this->files().read(logPath), Fault);
    EXPECT_THROW(this->files().read("C:\\Vorn Tandril"), Fault);
}

TYPED_TEST(FileSystemTest, AppendAddsAtTheEnd) {
    this->write(logPath, "one\r\n");
    this->files().append(logPath, "two\r\n");
    this->files().append(logPath, "");
    EXPECT_EQ(this->files().read(logPath), "one\r\ntwo\r\n");
}

TYPED_TEST(FileSystemTest, AppendNeverCreates) {
    EXPECT_THROW(this->files().append(logPath, "x"), Fault);
    EXPECT_THROW(this->files().append("C:\\Vorn Tandril", "x"), Fault);
    EXPECT_FALSE(this->files().fileExists(logPath));
}

TYPED_TEST(FileSystemTest, AppendAddsAllPiecesOrNothing) {
    this->write(logPath, "one ");
    const auto twoPieces = [](const platform::Content::Sink& sink) {
        sink("two ");
        sink("three");
    };
    this->files().append(logPath, platform::Content(twoPieces));
    EXPECT_EQ(this->files().read(logPath), "one two three");
    const auto halfOfThem = [](const platform::Content::Sink& sink) {
        sink(" four");
        throw Fault("no more");
    };
    EXPECT_THROW(this->files().append(logPath, platform::Content(halfOfThem)), Fault);
    EXPECT_EQ(this->files().read(logPath), "one two three");
}

TYPED_TEST(FileSystemTest, RenameReplacesTheFileOfThatName) {
    this->write(logPath, "old");
    this->write("C:\\Vorn Tandril\\kept.txt", "kept");
    this->files().rename("C:\\Vorn Tandril\\kept.txt", logPath);
    EXPECT_EQ(this->files().read(logPath), "kept");
    EXPECT_THAT(this->files().fileNames("C:\\Vorn Tandril"), ElementsAre("log.txt"));
}

TYPED_TEST(FileSystemTest, RenameStaysInTheFolder) {
    this->write(logPath, "kept");
    EXPECT_THROW(this->files().rename(logPath, "C:\\Vorn Tandril\\MasterData\\log.txt"), Fault);
    EXPECT_THROW(this->files().rename(logPath, "C:\\Vorn Tandril\\MasterData"), Fault);
    EXPECT_THROW(this->files().rename("C:\\Vorn Tandril\\MasterData", "C:\\Vorn Tandril\\New"),
                 Fault);
    EXPECT_THROW(this->files().rename("C:\\Vorn Tandril\\none", logPath), Fault);
    EXPECT_EQ(this->files().read(logPath), "kept");
}

TYPED_TEST(FileSystemTest, FileNamesAreSortedAndLeaveFoldersOut) {
    this->write("C:\\Vorn Tandril\\b.txt", "");
    this->write("C:\\Vorn Tandril\\a.txt", "");
    this->write("C:\\Vorn Tandril\\MasterData\\c.txt", "");
    EXPECT_THAT(this->files().fileNames("C:\\Vorn Tandril"), ElementsAre("a.txt", "b.txt"));
    EXPECT_THAT(this->files().fileNames("C:\\Vorn Tandril\\MasterData\\"), ElementsAre("c.txt"));
    EXPECT_THAT(this->files().fileNames("C:\\None"), IsEmpty());
    EXPECT_THAT(this->files().fileNames("C:\\Vorn Tandril\\a.txt"), IsEmpty());
}

TYPED_TEST(FileSystemTest, PathsThatMightLeadOutNameNothing) {
    for (const std::string path : strayPaths) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(this->files().fileExists(path));
        EXPECT_FALSE(this->files().folderExists(path));
        EXPECT_THAT(this->files().fileNames(path), IsEmpty());
        EXPECT_THROW(this->files().read(path), Fault);
        EXPECT_THROW(this->write(path, "x"), Fault);
        EXPECT_THROW(this->files().append(path, "x"), Fault);
        EXPECT_THROW(this->files().createFolder(path), Fault);
    }
}

TYPED_TEST(FileSystemTest, NulInAPathNamesNothing) {
    using namespace std::string_literals;
    this->write(logPath, "kept");
    const std::string path = "C:\\Vorn Tandril\\log.txt\0.mdb"s;
    EXPECT_FALSE(this->files().fileExists(path));
    EXPECT_THROW(this->write(path, "x"), Fault);
    EXPECT_EQ(this->files().read(logPath), "kept");
}

TYPED_TEST(FileSystemTest, NamesAreUtf8) {
    const std::string path =
        "C:\\Vorn Tandril\\Gr\xC3\xB6\xC3\x9F"
        "e \xE2\x82\xAC.txt";
    this->write(path, "x");
    EXPECT_THAT(this->files().fileNames("C:\\Vorn Tandril"), ElementsAre("Gr\xC3\xB6\xC3\x9F"
                                                                         "e \xE2\x82\xAC.txt"));
}

TYPED_TEST(FileSystemTest, TypeDescriptionComesFromTheExtension) {
    constexpr struct {
        const char* path;
        const char* description;
    } cases[] = {
        {"C:\\a\\Parts.mdb", "MDB File"}, {"C:\\a\\Parts.MdB", "MDB File"},
        {"C:\\a\\.mdb", "MDB File"},      {"C:\\a\\Parts.mdb.qqz", "QQZ File"},
        {"C:\\a\\Partsmdb", "File"},      {"C:\\a.mdb\\Parts", "File"},
        {"C:\\a\\Parts.", "File"},        {"C:\\a\\Parts.mdb ", "MDB  File"},
    };
    for (const auto& [path, description] : cases) {
        EXPECT_EQ(this->files().typeDescription(path), description) << path;
    }
}

TYPED_TEST(FileSystemTest, PlainTextComesBack) {
    // In every code page of Windows that has them.
    const std::string text = "Gr\xC3\xBC\xC3\x9F\x65\r\n";
    EXPECT_EQ(this->files().decodeAnsi(this->files().encodeAnsi(text)), text);
    EXPECT_EQ(this->files().encodeAnsi("a\tb"), "a\tb");
    EXPECT_EQ(this->files().decodeAnsi(""), "");
}

// Whoever reads the fault should not look for missing rights.
TEST(RealFilesTest, AFolderIsNamedAsWhatItIs) {
    RealFiles machine;
    platform::FileSystem& files = machine.files;
    files.createFolder("C:\\Vorn Tandril");
    files.createFolder(storePath);
    files.replace("C:\\Vorn Tandril\\file", "", Durability::Relaxed);
    const std::function<void()> attempts[] = {
        [&] { files.read(storePath); },
        [&] { files.replace(storePath, "", Durability::Durable); },
        [&] { files.append(storePath, ""); },
        [&] { files.rename(storePath, "C:\\Vorn Tandril\\other"); },
        [&] { files.rename("C:\\Vorn Tandril\\file", storePath); },
    };
    for (const auto& attempt : attempts) {
        try {
            attempt();
            ADD_FAILURE() << "a folder is taken for a file";
        } catch (const Fault& fault) {
            EXPECT_THAT(fault.what(), ::testing::EndsWith(": Is a directory"));
        }
    }
    EXPECT_TRUE(files.folderExists(storePath));
}

TEST(MemoryFilesTest, RecordsItsCalls) {
    MemoryFiles files;
    files.put("C:\\Vorn Tandril\\log.txt", "old");
    files.replace(logPath, "new", Durability::Durable);
    files.append(logPath, "er");
    files.read(logPath);
    EXPECT_EQ(files.count(FileOperation::Replace, logPath), 1);
    EXPECT_EQ(files.count(FileOperation::Append), 1);
    EXPECT_EQ(files.count(FileOperation::Read, "C:\\Vorn Tandril\\other"), 0);
    ASSERT_EQ(files.calls().size(), 3u);
    EXPECT_EQ(files.calls()[0].durability, Durability::Durable);
    EXPECT_EQ(files.content(logPath), "newer");
    files.forgetCalls();
    EXPECT_THAT(files.calls(), IsEmpty());
}

TEST(MemoryFilesTest, WithoutItsDriveNothingIsThere) {
    MemoryFiles files;
    files.put(logPath, "");
    files.removeDrive();
    EXPECT_FALSE(files.driveExists("C:"));
    EXPECT_FALSE(files.fileExists(logPath));
    EXPECT_THROW(files.createFolder("C:\\Vorn Tandril"), Fault);
}

TEST(FaultyFilesTest, FailsTheChosenOperationOnly) {
    MemoryFiles target;
    target.put(logPath, "");
    FaultyFiles files(target);
    files.failOn(FileOperation::Append, 2);
    files.append(logPath, "1");
    files.replace(logPath, "one ", Durability::Relaxed);
    EXPECT_THROW(files.append(logPath, "2"), Fault);
    files.append(logPath, "3");
    EXPECT_EQ(target.content(logPath), "one 3");
}

}  // namespace
}  // namespace tandril::test
