// The browser that is started is the one the system names, by a program that it has for that.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "support/process.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

using testing::IsEmpty;

// A program of this name first in the path, for the length of a test, that keeps what it is asked
// to show.
class FakeBrowser {
  public:
    FakeBrowser() : path_(std::getenv("PATH")) {
        folder_.write("xdg-open", "#!/bin/sh\nprintf %s \"$1\" >'" + folder_.pathOf("part") +
                                      "'\nmv '" + folder_.pathOf("part") + "' '" +
                                      folder_.pathOf("shown") + "'\n");
        std::filesystem::permissions(folder_.pathOf("xdg-open"), std::filesystem::perms::owner_all);
        ::setenv("PATH", (folder_.path() + ":" + path_).c_str(), 1);
    }
    ~FakeBrowser() { ::setenv("PATH", path_.c_str(), 1); }
    FakeBrowser(const FakeBrowser&) = delete;
    FakeBrowser& operator=(const FakeBrowser&) = delete;

    // What it was asked to show; waits a minute for that.
    std::string shown() const {
        for (int i = 0; i < 6000 && !folder_.exists("shown"); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return folder_.read("shown");
    }

  private:
    TemporaryHome folder_;
    std::string path_;
};

TEST(ServeInTheBrowser, OpensThePage) {
    const FakeBrowser browser;
    const TemporaryHome home;
    const TemporaryHome page;
    page.write("index.html", "start");
    Process host(TANDRIL_PROGRAM,
                 {"serve", "--home", home.path(), "--port", "0", "--page", page.path(), "--open"});
    const std::string url = host.readLine();
    EXPECT_EQ(browser.shown(), url);
    EXPECT_THAT(host.errors(), IsEmpty());
}

}  // namespace
}  // namespace tandril::test
