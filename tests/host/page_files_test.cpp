#include "host/page_files.h"

#include <gtest/gtest.h>

#include <string>

#include "host/page_files_fixture.h"
#include "platform/fault.h"

namespace tandril::host {
namespace {

TEST_F(PageFilesTest, RootIsTheStartPage) {
    for (const char* path : {"/", "/index.html"}) {
        const Response response = answer(path);
        EXPECT_EQ(response.status, 200);
        EXPECT_EQ(response.body, "start");
        EXPECT_EQ(response.contentType, "text/html; charset=utf-8");
    }
}

TEST_F(PageFilesTest, SubFoldersAreServed) {
    const Response response = answer("/js/app.js");
    EXPECT_EQ(response.body, "run()");
    EXPECT_EQ(response.contentType, "text/javascript; charset=utf-8");
}

TEST_F(PageFilesTest, WhatIsNoFileIsNotFound) {
    for (const char* path : {"/nowhere", "/js", "/js/", "//index.html", "/js//app.js",
                             "/index.html/", "/index.html/x", "/con", "/nul.html"}) {
        EXPECT_EQ(answer(path).status, 404) << path;
    }
}

TEST_F(PageFilesTest, DotNamesAreNotServed) {
    for (const char* path : {"/.git/config", "/js/.app.swp", "/..", "/../outside/secret.txt",
                             "/js/../../outside/secret.txt", "/./index.html"}) {
        EXPECT_EQ(answer(path).status, 404) << path;
    }
}

TEST_F(PageFilesTest, OtherNamesThatWindowsHasForAFileAreNotServed) {
    for (const char* path : {"/index.html.", "/index.html ", "/index.html::$DATA", "/index.html:x",
                             "/js./app.js", "/js\\app.js", "/index.htm?", "/index.htm<"}) {
        EXPECT_EQ(answer(path).status, 404) << path;
    }
}

TEST_F(PageFilesTest, ChangedFileShowsAtOnce) {
    const PageFiles files(folder_.pathOf("page"));
    EXPECT_EQ(files.answer("/").body, "start");
    folder_.write("page/index.html", "changed");
    EXPECT_EQ(files.answer("/").body, "changed");
}

TEST_F(PageFilesTest, FolderWithoutStartPageIsAFault) {
    EXPECT_THROW(PageFiles(folder_.pathOf("outside")), Fault);
    EXPECT_THROW(PageFiles(folder_.pathOf("nowhere")), Fault);
    EXPECT_THROW(PageFiles(folder_.pathOf("page/index.html")), Fault);
    EXPECT_THROW(PageFiles(""), Fault);
}

TEST(ContentType, GoesByTheEndOfTheNameInAnyCase) {
    EXPECT_EQ(contentTypeOf("a.css"), "text/css; charset=utf-8");
    EXPECT_EQ(contentTypeOf("A.CSS"), "text/css; charset=utf-8");
    EXPECT_EQ(contentTypeOf("a.min.js"), "text/javascript; charset=utf-8");
    EXPECT_EQ(contentTypeOf("a.svg"), "image/svg+xml");
    EXPECT_EQ(contentTypeOf("a.woff2"), "font/woff2");
    EXPECT_EQ(contentTypeOf("css"), "application/octet-stream");
    EXPECT_EQ(contentTypeOf("a.exe"), "application/octet-stream");
}

}  // namespace
}  // namespace tandril::host
