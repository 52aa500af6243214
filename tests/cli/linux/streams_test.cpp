// What becomes of output that nobody takes, by the ways of this system.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "support/process.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

using testing::IsEmpty;

const std::string unknownCall = R"({"method":"NoSuchMethod","args":[]})";

TEST(LinuxStreams, BatchEndsQuietlyWhenNobodyReadsItsAnswers) {
    const TemporaryHome home;
    Process batch(TANDRIL_PROGRAM, {"batch", "--home", home.path()});
    batch.closeOutput();
    batch.write(unknownCall + "\n");
    EXPECT_EQ(batch.wait().signal, SIGPIPE);
    EXPECT_THAT(batch.errors(), IsEmpty());
}

TEST(LinuxStreams, FullDiskIsReported) {
    for (const char* command : {"methods", "batch"}) {
        const TemporaryHome home;
        std::vector<std::string> arguments{command};
        if (arguments.front() == "batch") {
            arguments.insert(arguments.end(), {"--home", home.path()});
        }
        const ProcessResult result =
            runProcess(TANDRIL_PROGRAM, arguments, unknownCall + "\n", "/dev/full");
        EXPECT_EQ(result.errors, "cannot write to the standard output\n") << command;
        EXPECT_EQ(result.end.status, 1) << command;
    }
}

}  // namespace
}  // namespace tandril::test
