#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "support/process.h"
#include "support/temporary_home.h"

// The command serve as a process; what it serves has tests of its own.
namespace tandril::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class Serve : public testing::Test {
  protected:
    Serve() { page_.write("index.html", "start"); }

    std::vector<std::string> arguments(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> words{"serve", "--home", home_.path(), "--port",
                                       "0",     "--page", page_.path()};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }

    // The errors of a start that must fail.
    std::string refusal(const std::vector<std::string>& words, int status = 1) const {
        const ProcessResult result = runProcess(TANDRIL_PROGRAM, words);
        EXPECT_EQ(result.end.status, status);
        EXPECT_THAT(result.output, IsEmpty());
        return result.errors;
    }

    TemporaryHome home_;
    TemporaryHome page_;
};

TEST_F(Serve, PrintsOneUrlAndStopsWhenItIsTold) {
    for (const Stop how : {Stop::Interrupt, Stop::Terminate}) {
        Process host(TANDRIL_PROGRAM, arguments());
        const std::string url = host.readLine();
        EXPECT_TRUE(std::regex_match(
            url, std::regex("http://127\\.0\\.0\\.1:[0-9]+/\\?launch=[0-9a-f]{64}")))
            << url;
        host.tell(how);
        EXPECT_EQ(host.wait().status, 0);
        EXPECT_THAT(host.errors(), IsEmpty());
    }
}

TEST_F(Serve, SecondOneForAHomeSaysWhoHasIt) {
    Process host(TANDRIL_PROGRAM, arguments());
    host.readLine();
    EXPECT_EQ(refusal(arguments()), "the home " + home_.path() + " is already served by process " +
                                        std::to_string(host.id()) + "\n");
}

TEST_F(Serve, HomeIsFreeAfterAKill) {
    {
        Process host(TANDRIL_PROGRAM, arguments());
        host.readLine();
        host.tell(Stop::Kill);
        host.wait();
    }
    Process host(TANDRIL_PROGRAM, arguments());
    EXPECT_THAT(host.readLine(), HasSubstr("?launch="));
}

TEST_F(Serve, PortInUse) {
    Process host(TANDRIL_PROGRAM, arguments());
    const std::string url = host.readLine();
    const std::size_t colon = url.rfind(':');
    const std::string port = url.substr(colon + 1, url.find('/', colon) - colon - 1);
    const TemporaryHome other;
    EXPECT_EQ(refusal({"serve", "--home", other.path(), "--port", port, "--page", page_.path()}),
              "cannot listen on port " + port + " of 127.0.0.1; is it in use?\n");
}

TEST_F(Serve, MissingHome) {
    EXPECT_EQ(refusal({"serve", "--home", home_.pathOf("nowhere"), "--page", page_.path()}),
              "there is no home folder " + home_.pathOf("nowhere") + "\n");
    EXPECT_FALSE(home_.exists("nowhere"));
}

TEST_F(Serve, FolderWithoutPage) {
    EXPECT_EQ(refusal({"serve", "--home", home_.path(), "--page", home_.path()}),
              "there is no page in the folder " + home_.path() +
                  ": it has no index.html; --page names another one\n");
}

TEST_F(Serve, EnterpriseThatIsNoUrl) {
    EXPECT_EQ(refusal(arguments({"--enterprise", "enterprise.example"})),
              "this is not the URL of an enterprise server: enterprise.example\n");
}

TEST_F(Serve, NumbersOutOfTheirRange) {
    for (const char* option : {"--port", "--enterprise-timeout", "--body-limit"}) {
        for (const char* value : {"-1", "65536", "x", "1.5"}) {
            EXPECT_THAT(
                refusal({"serve", "--home", home_.path(), "--page", page_.path(), option, value},
                        2),
                HasSubstr(option))
                << value;
        }
    }
    EXPECT_FALSE(home_.exists("host.lock"));
}

}  // namespace
}  // namespace tandril::test
