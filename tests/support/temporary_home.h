#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tandril::test {

// An empty folder of its own, removed with everything in it when destroyed. Paths within are given
// with slashes: "Vorn Tandril/log.txt".
class TemporaryHome {
  public:
    TemporaryHome();
    ~TemporaryHome();
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    const std::string& path() const { return path_; }
    std::string pathOf(std::string_view relative) const;

    // Makes a file with its folders.
    void write(std::string_view relative, std::string_view bytes) const;
    // Content of a file; "(no file)" when there is none.
    std::string read(std::string_view relative) const;
    void makeFolder(std::string_view relative) const;
    bool exists(std::string_view relative) const;
    // Names of everything in a folder, sorted.
    std::vector<std::string> names(std::string_view relative = "") const;

  private:
    std::string path_;
};

}  // namespace tandril::test
