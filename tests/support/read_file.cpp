#include "support/read_file.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tandril::test {

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

}  // namespace tandril::test
