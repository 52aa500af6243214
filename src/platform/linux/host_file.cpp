#include "platform/home/host_file.h"

#include <unistd.h>

#include <cerrno>

#include "platform/linux/posix_file.h"

namespace tandril::platform {

bool isHostFileMissing(const std::string& path) {
    return ::access(path.c_str(), F_OK) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

std::string readHostFile(const std::string& path) {
    return readFile(path, path);
}

void replaceHostFile(const std::string& path, std::string_view bytes, Durability durability) {
    replaceFile(path, path, bytes, durability);
}

}  // namespace tandril::platform
