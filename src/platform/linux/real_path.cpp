#include "platform/real_path.h"

#include <system_error>

namespace tandril::platform {

std::optional<std::filesystem::path> realPath(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path real = std::filesystem::canonical(path, error);
    if (error) return std::nullopt;
    return real;
}

}  // namespace tandril::platform
