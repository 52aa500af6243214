#include "host/journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "host/running_host.h"
#include "platform/fault.h"
#include "support/files_wrapper.h"
#include "support/memory_files.h"

// What the page finds again after a crash.
namespace tandril::test {
namespace {

using host::Journal;
using testing::HasSubstr;

constexpr const char* filePath = "C:\\Vorn Tandril\\PageJournal.json";
constexpr const char* damagedPath = "C:\\Vorn Tandril\\PageJournal.damaged.json";

TEST(Journal, NothingWasWrittenYet) {
    MemoryFiles files;
    EXPECT_EQ(Journal(files).read().body, "{\"revision\":0,\"content\":null}\n");
}

TEST(Journal, WhatIsWrittenIsReadByTheNextOne) {
    MemoryFiles files;
    files.put("C:\\Vorn Tandril\\log.txt", "");
    const host::Response written =
        Journal(files).write(R"({"revision":0,"content":{"text":"Grö\"ße\u0000"}})");
    EXPECT_EQ(written.status, 200);
    EXPECT_EQ(written.body, "{\"revision\":1}\n");
    EXPECT_EQ(Journal(files).read().body,
              "{\"revision\":1,\"content\":{\"text\":\"Gr\xC3\xB6\\\"\xC3\x9F"
              "e\\u0000\"}}\n");
}

TEST(Journal, AWriteIsOnTheDiskWhenItReturns) {
    MemoryFiles files;
    files.put("C:\\Vorn Tandril\\log.txt", "");
    Journal(files).write(R"({"revision":0,"content":1})");
    ASSERT_EQ(files.count(FileOperation::Replace, filePath), 1);
    EXPECT_EQ(files.calls().back().durability, platform::Durability::Durable);
}

TEST(Journal, AnOlderRevisionOverwritesNothing) {
    MemoryFiles files;
    files.put(filePath, R"({"revision":7,"content":"kept"})");
    for (const char* body : {R"({"revision":6,"content":"mine"})", R"({"revision":8,"content":1})",
                             R"({"revision":0,"content":null})"}) {
        const host::Response refused = Journal(files).write(body);
        EXPECT_EQ(refused.status, 409) << body;
        EXPECT_EQ(refused.body, "{\"revision\":7,\"content\":\"kept\"}\n");
    }
    EXPECT_EQ(files.count(FileOperation::Replace), 0);
}

TEST(Journal, ABodyThatIsNone) {
    MemoryFiles files;
    for (const char* body :
         {"", "[]", "{", R"({"content":1})", R"({"revision":0})", R"({"revision":-1,"content":1})",
          R"({"revision":"0","content":1})", R"({"revision":0.5,"content":1})"}) {
        EXPECT_EQ(Journal(files).write(body).status, 400) << body;
    }
    EXPECT_EQ(files.count(FileOperation::Replace), 0);
}

TEST(Journal, ADamagedFileIsSaidAndPutAside) {
    MemoryFiles files;
    files.put(filePath, R"({"revision":7,"cont)");
    EXPECT_EQ(Journal(files).read().body, "{\"revision\":0,\"content\":null,\"damaged\":true}\n");
    EXPECT_EQ(Journal(files).write(R"({"revision":0,"content":2})").body, "{\"revision\":1}\n");
    EXPECT_EQ(files.content(damagedPath), R"({"revision":7,"cont)");
    EXPECT_EQ(files.content(filePath), "{\"revision\":1,\"content\":2}\n");
}

class FullDisk : public FilesWrapper {
  public:
    using FilesWrapper::FilesWrapper;
    void replace(std::string_view, const platform::Content&, platform::Durability) override {
        throw Fault("the disk is full");
    }
};

TEST(Journal, AFullDiskIsAFaultAndLeavesTheOldOne) {
    MemoryFiles files;
    files.put(filePath, R"({"revision":7,"content":"kept"})");
    FullDisk full(files);
    EXPECT_THROW(Journal(full).write(R"({"revision":7,"content":1})"), Fault);
    EXPECT_EQ(Journal(files).read().body, "{\"revision\":7,\"content\":\"kept\"}\n");
}

TEST(HostJournal, OverTheHost) {
    RunningHost host;
    host.post("/client20/Initialize", "[]");
    EXPECT_EQ(host.get("/journal").body, "{\"revision\":0,\"content\":null}\n");
    EXPECT_EQ(host.post("/journal", R"({"revision":0,"content":[1]})").status(), 200);
    EXPECT_EQ(host.get("/journal").body, "{\"revision\":1,\"content\":[1]}\n");
    EXPECT_EQ(host.post("/journal", R"({"revision":0,"content":[2]})").status(), 409);
    EXPECT_EQ(host.home().read("Vorn Tandril/PageJournal.json"),
              "{\"revision\":1,\"content\":[1]}\n");
}

TEST(HostJournal, WithoutTheFolderItCannotBeKept) {
    RunningHost host;
    const RawResponse response = host.post("/journal", R"({"revision":0,"content":1})");
    EXPECT_EQ(response.status(), 500);
    EXPECT_THAT(response.body, HasSubstr("\"fault\":"));
}

TEST(HostJournal, OnlyOurPageMayWriteIt) {
    RunningHost host;
    host.post("/client20/Initialize", "[]");
    const std::string body = R"({"revision":0,"content":1})";
    EXPECT_EQ(host.post("/journal", body, "Sec-Fetch-Site: cross-site\r\n").status(), 403);
    const RawResponse anonymous = exchange(
        host.port(), "POST /journal HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(host.port()) +
                         "\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(anonymous.status(), 401);
    std::string head = host.postHead("/journal");
    head.replace(head.find("application/json"), 16, "text/plain; x=yz");
    EXPECT_EQ(exchange(host.port(), head + "Content-Length: 0\r\n\r\n").status(), 415);
    EXPECT_FALSE(host.home().exists("Vorn Tandril/PageJournal.json"));
}

}  // namespace
}  // namespace tandril::test
