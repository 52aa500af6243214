#include "support/temporary_home.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

#include "platform/utf8_path.h"

namespace tandril::test {
namespace fs = std::filesystem;

TemporaryHome::TemporaryHome() {
    std::random_device random;
    for (;;) {
        const fs::path path =
            fs::temp_directory_path() / ("tandril-test-" + std::to_string(random()));
        if (!fs::create_directory(path)) continue;
        path_ = platform::utf8FromPath(path);
        return;
    }
}

TemporaryHome::~TemporaryHome() {
    std::error_code ignored;
    fs::remove_all(platform::pathFromUtf8(path_), ignored);
}

std::string TemporaryHome::pathOf(std::string_view relative) const {
    return platform::utf8FromPath(platform::pathFromUtf8(path_) / platform::pathFromUtf8(relative));
}

void TemporaryHome::write(std::string_view relative, std::string_view bytes) const {
    const fs::path path = platform::pathFromUtf8(pathOf(relative));
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

std::string TemporaryHome::read(std::string_view relative) const {
    std::ifstream file(platform::pathFromUtf8(pathOf(relative)), std::ios::binary);
    if (!file) return "(no file)";
    return {std::istreambuf_iterator<char>(file), {}};
}

void TemporaryHome::makeFolder(std::string_view relative) const {
    fs::create_directories(platform::pathFromUtf8(pathOf(relative)));
}

bool TemporaryHome::exists(std::string_view relative) const {
    return fs::exists(platform::pathFromUtf8(pathOf(relative)));
}

std::vector<std::string> TemporaryHome::names(std::string_view relative) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(platform::pathFromUtf8(pathOf(relative)))) {
        names.push_back(platform::utf8FromPath(entry.path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace tandril::test
