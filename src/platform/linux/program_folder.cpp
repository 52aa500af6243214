#include "platform/program_folder.h"

#include <system_error>

namespace tandril::platform {

std::filesystem::path programFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

}  // namespace tandril::platform
