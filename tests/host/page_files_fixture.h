#pragma once

#include <gtest/gtest.h>

#include <string>

#include "host/page_files.h"
#include "support/temporary_home.h"

namespace tandril::host {

// A page in a folder, and something beside it that is not to be served.
class PageFilesTest : public testing::Test {
  protected:
    PageFilesTest() {
        folder_.write("page/index.html", "start");
        folder_.write("page/js/app.js", "run()");
        folder_.write("page/.git/config", "hidden");
        folder_.write("page/js/.app.swp", "hidden");
        folder_.write("outside/secret.txt", "secret");
    }

    Response answer(const std::string& path) const {
        return PageFiles(folder_.pathOf("page")).answer(path);
    }

    test::TemporaryHome folder_;
};

}  // namespace tandril::host
