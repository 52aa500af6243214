// What becomes of output that nobody takes: Windows has no signal for that, and ends nobody.
#include <gtest/gtest.h>

#include <string>

#include "support/process.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

TEST(WindowsStreams, BatchSaysWhenNobodyReadsItsAnswers) {
    const TemporaryHome home;
    Process batch(TANDRIL_PROGRAM, {"batch", "--home", home.path()});
    batch.closeOutput();
    batch.write("{\"method\":\"NoSuchMethod\",\"args\":[]}\n");
    EXPECT_EQ(batch.wait().status, 1);
    EXPECT_EQ(batch.errors(), "cannot write to the standard output\n");
}

}  // namespace
}  // namespace tandril::test
