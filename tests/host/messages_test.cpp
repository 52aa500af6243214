#include "host/messages.h"

#include <gtest/gtest.h>

#include <sstream>

#include "host/running_host.h"
#include "support/recording_shell.h"

// What the component shows on the screen of its program reaches the page, too.
namespace tandril::test {
namespace {

using host::AnnouncingShell;
using host::Messages;

TEST(Messages, OnlyThoseThatAreNewer) {
    Messages messages;
    messages.add("title", "one");
    messages.add("title", "two");
    ASSERT_EQ(messages.after(1).size(), 1U);
    EXPECT_EQ(messages.after(1)[0].number, 2);
    EXPECT_EQ(messages.after(1)[0].text, "two");
    EXPECT_TRUE(messages.after(2).empty());
}

TEST(Messages, TheLastTwentyAreKept) {
    Messages messages;
    for (int i = 1; i <= 25; ++i) {
        messages.add("title", std::to_string(i));
    }
    ASSERT_EQ(messages.after(0).size(), Messages::mostKept);
    EXPECT_EQ(messages.after(0).front().number, 6);
    EXPECT_EQ(messages.after(0).back().text, "25");
}

TEST(AnnouncingShell, TellsThePageAndTheLogAndShowsNothing) {
    RecordingShell shell;
    Messages messages;
    std::ostringstream log;
    AnnouncingShell announcing(shell, messages, log);
    announcing.showCritical("Archive", "is missing");
    EXPECT_EQ(log.str(), "Archive: is missing\n");
    EXPECT_TRUE(shell.messages.empty());
    ASSERT_EQ(messages.after(0).size(), 1U);
    EXPECT_EQ(messages.after(0)[0].title, "Archive");
}

TEST(AnnouncingShell, StartsWhatTheOtherOneStarts) {
    RecordingShell shell;
    Messages messages;
    std::ostringstream log;
    AnnouncingShell announcing(shell, messages, log);
    EXPECT_TRUE(announcing.start("C:\\x", "y.exe"));
    shell.startSucceeds = false;
    EXPECT_FALSE(announcing.start("C:\\x", "z.exe"));
    EXPECT_EQ(shell.starts.size(), 2U);
    EXPECT_TRUE(messages.after(0).empty());
}

TEST(HostMessages, AMissingArchiveIsTold) {
    RunningHost host;
    host.post("/client20/Initialize", "[]");
    EXPECT_EQ(host.get("/messages").body, "[]\n");
    host.post("/client20/ExplodeZip", "[\"nowhere\"]");
    EXPECT_EQ(host.get("/messages?after=0").body,
              R"([{"number":1,"title":"","text":"nowhere.exe\r\nC:\\Vorn Tandril\\MasterData\\  )"
              R"(\r\n\r\n"}])"
              "\n");
    EXPECT_EQ(host.get("/messages?after=1").body, "[]\n");
    EXPECT_EQ(host.get("/messages?after=x").body, host.get("/messages").body);
}

}  // namespace
}  // namespace tandril::test
