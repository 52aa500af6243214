#include <gtest/gtest.h>

#include "support/process.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

const std::string store = "Vorn Tandril/Harbrook.xml";
const std::string finished =
    "<harbrook><ccsocservcordr><record ServiceOrder=\"A1\" State=\"MU\"><s>20</s></record>"
    "</ccsocservcordr><ccsocservclabr><ServiceOrder ID=\"A1\" Activity=\"10\" State=\"O\">"
    "<line LineNumber=\"1\" State=\"NU\"/></ServiceOrder></ccsocservclabr></harbrook>";

// A home from which an order was purged.
class RemovedCommand : public testing::Test {
  protected:
    RemovedCommand() {
        home_.write(store, finished);
        run({"call", "--home", home_.path(), "deleteCompletedOrders", ""});
    }
    static ProcessResult run(const std::vector<std::string>& arguments) {
        return runProcess(TANDRIL_PROGRAM, arguments);
    }
    ProcessResult removed(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "removed");
        arguments.insert(arguments.end(), {"--home", home_.path()});
        return run(arguments);
    }
    // The list without its times.
    std::string list() const {
        std::string text = removed({"list"}).output;
        std::size_t at = 0;
        while ((at = text.find('\t', at)) != std::string::npos) {
            text.erase(at, text.find('\t', at + 1) - at);
            at = text.find('\n', at);
        }
        return text;
    }

    TemporaryHome home_;
};

TEST_F(RemovedCommand, ListsAndRestoresAll) {
    EXPECT_EQ(list(), "1\tpurge\torder A1\tMU\n2\tpurge\tlabor A1/10/1\tNU\n");
    const ProcessResult result = removed({"restore", "--all"});
    EXPECT_EQ(result.output, "restored 1\nrestored 2\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.end.status, 0);
    EXPECT_EQ(home_.read(store), finished);
    EXPECT_EQ(list(), "");
}

TEST_F(RemovedCommand, RestoresOneForTheNextUpload) {
    EXPECT_EQ(removed({"restore", "1", "--resend"}).output, "restored 1\n");
    EXPECT_NE(home_.read(store).find("<record ServiceOrder=\"A1\" State=\"M\">"),
              std::string::npos);
    EXPECT_EQ(list(), "2\tpurge\tlabor A1/10/1\tNU\n");
}

TEST_F(RemovedCommand, SaysWhatIsThereAlready) {
    home_.write(store, finished);
    const ProcessResult result = removed({"restore", "1"});
    EXPECT_EQ(result.errors, "the store has such a record already, kept 1\n");
    EXPECT_EQ(result.end.status, 1);
    EXPECT_EQ(home_.read(store), finished);
}

TEST_F(RemovedCommand, RestoresNothingWhenOneNumberIsUnknown) {
    const std::string before = home_.read(store);
    const ProcessResult result = removed({"restore", "1", "9"});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "no copy 9\n");
    EXPECT_EQ(result.end.status, 2);
    EXPECT_EQ(home_.read(store), before);
}

TEST_F(RemovedCommand, RestoresALineWhoseOrderIsGone) {
    EXPECT_EQ(removed({"restore", "2"}).output, "restored 2\n");
    EXPECT_EQ(home_.read(store),
              "<harbrook><ccsocservcordr/><ccsocservclabr><ServiceOrder ID=\"A1\" "
              "Activity=\"10\" State=\"O\"><line LineNumber=\"1\" State=\"NU\"/>"
              "</ServiceOrder></ccsocservclabr></harbrook>");
    EXPECT_EQ(list(), "1\tpurge\torder A1\tMU\n");
}

TEST_F(RemovedCommand, ReportsDamagedCopies) {
    home_.write("Vorn Tandril/Removed.xml", "<damaged");
    for (const char* const action : {"list", "restore"}) {
        std::vector<std::string> arguments{action};
        if (arguments.front() == "restore") arguments.emplace_back("--all");
        const ProcessResult result = removed(arguments);
        EXPECT_EQ(result.errors, "\"C:\\Vorn Tandril\\Removed.xml\" is damaged\n");
        EXPECT_EQ(result.end.status, 1);
    }
    EXPECT_EQ(home_.read("Vorn Tandril/Removed.xml"), "<damaged");
}

TEST_F(RemovedCommand, NeedsAHome) {
    const std::string nowhere = home_.pathOf("nowhere");
    const ProcessResult result = run({"removed", "list", "--home", nowhere});
    EXPECT_EQ(result.errors, "there is no home \"" + nowhere + "\"\n");
    EXPECT_EQ(result.end.status, 1);
}

}  // namespace
}  // namespace tandril::test
