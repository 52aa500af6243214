#include <gtest/gtest.h>

#include <string>

#include "support/process.h"
#include "support/temporary_home.h"

// How the program treats its standard streams.
namespace tandril::test {
namespace {

const std::string unknownCall = R"({"method":"NoSuchMethod","args":[]})";

TEST(BatchStreams, EachAnswerComesBeforeTheNextRequest) {
    const TemporaryHome home;
    Process batch(TANDRIL_PROGRAM, {"batch", "--home", home.path()});
    for (const std::string id : {"1", "2"}) {
        batch.write(R"({"method":"NoSuchMethod","args":[],"id":)" + id + "}\n");
        EXPECT_EQ(batch.readLine(),
                  R"({"invalid":"unknown method: NoSuchMethod","id":)" + id + "}");
    }
    batch.closeInput();
    EXPECT_EQ(batch.wait().status, 0);
}

TEST(BatchStreams, LastLineNeedsNoLineEnd) {
    const TemporaryHome home;
    const ProcessResult result =
        runProcess(TANDRIL_PROGRAM, {"batch", "--home", home.path()}, unknownCall);
    EXPECT_EQ(result.output, "{\"invalid\":\"unknown method: NoSuchMethod\"}\n");
    EXPECT_EQ(result.end.status, 0);
}

TEST(BatchStreams, TakesALineOfManyMegabytes) {
    const TemporaryHome home;
    const std::string name(20'000'000, 'x');
    const ProcessResult result =
        runProcess(TANDRIL_PROGRAM, {"batch", "--home", home.path()},
                   R"({"method":")" + name + "\",\"args\":[]}\n" + unknownCall + "\n");
    EXPECT_EQ(result.output.size(), std::string(R"({"invalid":"unknown method: "})").size() + 1 +
                                        name.size() +
                                        std::string(R"({"invalid":"unknown method: "})").size() +
                                        std::string("NoSuchMethod\n").size());
    EXPECT_TRUE(result.output.ends_with("\n{\"invalid\":\"unknown method: NoSuchMethod\"}\n"));
}

}  // namespace
}  // namespace tandril::test
