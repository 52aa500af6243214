#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "host/page_files_fixture.h"

// What file systems elsewhere do not have: links that any user may make, and names that differ in
// nothing but their case.
namespace tandril::host {
namespace {

namespace fs = std::filesystem;

class PageFilesOnLinux : public PageFilesTest {
  protected:
    void link(const std::string& target, const std::string& name) const {
        fs::create_symlink(target, folder_.pathOf("page/" + name));
    }
};

TEST_F(PageFilesOnLinux, LinksOutOfTheFolderAreNotServed) {
    link(folder_.pathOf("outside/secret.txt"), "file.txt");
    link("../outside", "folder");
    link("/etc/hostname", "host.txt");
    for (const char* path : {"/file.txt", "/folder/secret.txt", "/host.txt"}) {
        EXPECT_EQ(answer(path).status, 404) << path;
    }
}

TEST_F(PageFilesOnLinux, FolderBesideWithTheSameStartIsOutside) {
    folder_.write("page2/x.txt", "secret");
    link("../page2/x.txt", "x.txt");
    EXPECT_EQ(answer("/x.txt").status, 404);
}

TEST_F(PageFilesOnLinux, LinksWithinTheFolderAreServed) {
    link("js/app.js", "latest.js");
    EXPECT_EQ(answer("/latest.js").body, "run()");
}

TEST_F(PageFilesOnLinux, LinkToAHiddenFileIsNotServed) {
    folder_.write("page/.git/config", "hidden");
    link(".git/config", "config.txt");
    EXPECT_EQ(answer("/config.txt").status, 404);
}

TEST_F(PageFilesOnLinux, FolderMayBeALinkItself) {
    fs::create_directory_symlink(folder_.pathOf("page"), folder_.pathOf("link"));
    EXPECT_EQ(PageFiles(folder_.pathOf("link")).answer("/js/app.js").body, "run()");
}

TEST_F(PageFilesOnLinux, NameInAnotherCaseIsAnother) {
    EXPECT_EQ(answer("/Index.html").status, 404);
}

}  // namespace
}  // namespace tandril::host
