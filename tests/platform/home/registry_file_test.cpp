// What a registry in a file adds to the registry: when it is read and written.
#include "platform/home/registry_file.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "platform/fault.h"
#include "support/child_process.h"
#include "support/temporary_home.h"

namespace tandril::platform {
namespace {

using test::TemporaryHome;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

constexpr RegistryRoot root = RegistryRoot::LocalMachine;
constexpr std::string_view keyPath = "SOFTWARE\\Vorn\\Vorn Tandril";
constexpr const char* fileName = "registry.reg";

std::string settings(std::string_view mode) {
    return "Windows Registry Editor Version 5.00\r\n\r\n"
           "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vorn\\Vorn Tandril]\r\n\"Mode\"=\"" +
           std::string(mode) + "\"\r\n\r\n";
}

class RegistryFileTest : public ::testing::Test {
  protected:
    // Tells the saved file from the one before: a save makes a new one.
    ino_t fileNumber() const {
        struct stat status {};
        EXPECT_EQ(::stat(home.pathOf(fileName).c_str(), &status), 0);
        return status.st_ino;
    }

    TemporaryHome home;
    RegistryFile registry{home.pathOf(fileName)};
};

TEST_F(RegistryFileTest, LookingCreatesNoFile) {
    EXPECT_FALSE(registry.keyExists(root, keyPath));
    EXPECT_FALSE(registry.setExisting(root, keyPath, "Mode", "x"));
    registry.flush(Durability::Durable);
    EXPECT_THAT(home.names(), IsEmpty());
}

TEST_F(RegistryFileTest, TheFirstSaveCreatesTheFile) {
    registry.createKey(root, "SOFTWARE");
    EXPECT_THAT(home.names(), IsEmpty());
    registry.flush(Durability::Durable);
    EXPECT_EQ(home.read(fileName),
              "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE]\r\n\r\n");
    EXPECT_THAT(home.names(), ElementsAre(fileName));
}

TEST_F(RegistryFileTest, BothRootsAreFoundInAnyCase) {
    home.write(fileName,
               "Windows Registry Editor Version 5.00\r\n[hkey_local_machine\\a]\r\n\"x\"=\"1\"\r\n"
               "[Hkey_Current_User\\a]\r\n\"x\"=\"2\"\r\n");
    EXPECT_THAT(registry.read(root, "A", "x"), Optional(std::string("1")));
    EXPECT_THAT(registry.read(RegistryRoot::CurrentUser, "A", "x"), Optional(std::string("2")));
}

TEST_F(RegistryFileTest, IsReadOncePerRefresh) {
    home.write(fileName, settings("Online"));
    EXPECT_THAT(registry.read(root, keyPath, "Mode"), Optional(std::string("Online")));
    home.write(fileName, settings("Offline"));
    EXPECT_THAT(registry.read(root, keyPath, "Mode"), Optional(std::string("Online")));
    registry.refresh();
    EXPECT_THAT(registry.read(root, keyPath, "Mode"), Optional(std::string("Offline")));
}

TEST_F(RegistryFileTest, ValuesAndKeysKeepTheirOrder) {
    registry.createKey(root, "b");
    registry.createKey(root, "a");
    for (const char* name : {"b", "c", "a", "b"}) registry.setText(root, "b", name, "1");
    registry.flush(Durability::Durable);
    registry.refresh();
    EXPECT_THAT(registry.subKeys(root, ""), ElementsAre("b", "a"));
    EXPECT_THAT(registry.valueNames(root, "b"), ElementsAre("b", "c", "a"));
}

TEST_F(RegistryFileTest, RefreshDropsWhatWasNotFlushed) {
    home.write(fileName, settings("Online"));
    registry.setExisting(root, keyPath, "Mode", "Offline");
    EXPECT_THAT(registry.read(root, keyPath, "Mode"), Optional(std::string("Offline")));
    registry.refresh();
    EXPECT_THAT(registry.read(root, keyPath, "Mode"), Optional(std::string("Online")));
}

TEST_F(RegistryFileTest, IsWrittenOnlyWhenAValueChanged) {
    home.write(fileName, settings("Online"));
    const ino_t before = fileNumber();
    registry.setExisting(root, keyPath, "Mode", "Offline");
    registry.setExisting(root, keyPath, "Mode", "Online");
    registry.flush(Durability::Durable);
    EXPECT_EQ(fileNumber(), before);
    registry.setExisting(root, keyPath, "Mode", "Offline");
    registry.flush(Durability::Relaxed);
    EXPECT_NE(fileNumber(), before);
    EXPECT_EQ(home.read(fileName), settings("Offline"));
}

TEST_F(RegistryFileTest, AMalformedFileIsNamedAndLeftAlone) {
    const std::string malformed = settings("Online") + "\"open\r\n";
    home.write(fileName, malformed);
    for (int i = 0; i < 2; ++i) {
        try {
            registry.createKey(root, keyPath);
            FAIL() << "no fault";
        } catch (const Fault& fault) {
            EXPECT_EQ(std::string(fault.what()),
                      "cannot read the registry file \"" + home.pathOf(fileName) +
                          "\": line 6: the closing quotation mark is missing");
        }
        registry.flush(Durability::Durable);
    }
    EXPECT_EQ(home.read(fileName), malformed);
}

TEST_F(RegistryFileTest, AFolderInItsPlaceIsAFault) {
    home.makeFolder(fileName);
    EXPECT_THROW(registry.keyExists(root, keyPath), Fault);
}

TEST_F(RegistryFileTest, WithoutAHomeItIsEmptyAndCannotBeSaved) {
    RegistryFile lost(home.pathOf("none/registry.reg"));
    EXPECT_FALSE(lost.keyExists(root, keyPath));
    lost.flush(Durability::Durable);
    lost.createKey(root, keyPath);
    EXPECT_THROW(lost.flush(Durability::Durable), Fault);
    EXPECT_THAT(home.names(), IsEmpty());
}

TEST_F(RegistryFileTest, AFailedSaveLeavesTheFile) {
    home.write(fileName, settings("Online"));
    const test::ChildEnd end = test::runInChild({.fileSizeLimit = 8}, [&] {
        registry.setText(root, keyPath, "Mode", "Offline");
        registry.flush(Durability::Durable);
        return 0;
    });
    EXPECT_EQ(end.exitStatus, test::endedByFault);
    EXPECT_EQ(home.read(fileName), settings("Online"));
    EXPECT_THAT(home.names(), ElementsAre(fileName));
}

}  // namespace
}  // namespace tandril::platform
