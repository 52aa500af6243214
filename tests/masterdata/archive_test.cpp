#include "masterdata/archive.h"

#include <gmock/gmock.h>

#include "support/recording_shell.h"

namespace tandril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::string_view folder = "C:\\Vorn Tandril\\MasterData";

std::string label(std::string_view code) {
    return "[" + std::string(code) + "]";
}

TEST(StartArchive, StartsTheProgramInTheFolder) {
    RecordingShell shell;
    masterdata::startArchive(shell, folder, "Master 1", label);
    EXPECT_THAT(shell.starts,
                ElementsAre(RecordingShell::Start{std::string(folder), "Master 1.exe"}));
    EXPECT_THAT(shell.messages, IsEmpty());
}

TEST(StartArchive, ShowsThatItIsMissing) {
    RecordingShell shell;
    shell.startSucceeds = false;
    masterdata::startArchive(shell, folder, "Master", label);
    EXPECT_THAT(shell.messages,
                ElementsAre(RecordingShell::Message{
                    "[SLBEU0313]",
                    "[SLBEU0310]Master.exe\r\n[SLBEU0311]C:\\Vorn Tandril\\MasterData\\  \r\n\r\n"
                    "[SLBEU0312]"}));
}

TEST(StartArchive, StartsNothingOutsideOfTheFolder) {
    for (const std::string& name :
         {std::string("..\\evil"), std::string("a\\b"), std::string("../evil"), std::string("a/b"),
          std::string("a\0b", 3)}) {
        RecordingShell shell;
        masterdata::startArchive(shell, folder, name, label);
        EXPECT_THAT(shell.starts, IsEmpty()) << name;
        EXPECT_EQ(shell.messages.size(), 1U) << name;
    }
}

}  // namespace
}  // namespace tandril::test
