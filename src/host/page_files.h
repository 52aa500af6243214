#pragma once

#include <filesystem>
#include <string_view>

#include "host/http_message.h"

namespace tandril::host {

// The files of the page folder. Each request reads its file anew, so that a changed file shows when
// the page is loaded again.
class PageFiles {
  public:
    // Throws Fault when there is no such folder, or no index.html in it.
    explicit PageFiles(const std::filesystem::path& folder);

    // Answers a decoded path that begins with "/"; "/" is index.html. 404 for what is no file of
    // the folder: other folders, names that begin with ".", and links that lead out of it.
    Response answer(std::string_view path) const;

  private:
    // The file of the path, or an empty path.
    std::filesystem::path find(std::string_view path) const;

    std::filesystem::path folder_;  // without links in it
};

// The Content-Type for a file of that name; "application/octet-stream" when it is not known.
std::string_view contentTypeOf(std::string_view name);

}  // namespace tandril::host
