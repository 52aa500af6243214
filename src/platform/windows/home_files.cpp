#include "platform/windows/home_files.h"

#include "platform/system_path.h"
#include "platform/windows/wide.h"

namespace tandril::platform {

std::string HomeFiles::typeDescription(std::string_view path) const {
    return describeFileType(path);
}

std::optional<std::string> HomeFiles::realPath(std::string_view path) const {
    if (const auto plain = plainPath(path)) return toUtf8(*plain);
    return std::nullopt;
}

}  // namespace tandril::platform
