#include "platform/temporary_names.h"

#include <array>
#include <cstdio>
#include <random>

namespace tandril::platform {

std::string temporaryName(std::string_view target, int number) {
    return ".tandril-" + std::string(target) + "-" + std::to_string(number) + ".tmp";
}

// Not the process's id: that would collide where processes of several containers or machines share
// the folder.
std::string randomTemporaryName() {
    std::random_device random;
    std::array<char, 40> name{};
    std::snprintf(name.data(), name.size(), ".tandril-%08x%08x.tmp", random(), random());
    return name.data();
}

}  // namespace tandril::platform
