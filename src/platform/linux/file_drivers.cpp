#include "platform/home/file_drivers.h"

#include "platform/home/unix_drivers.h"

namespace tandril::platform {

std::unique_ptr<Connection> openSqliteFile(const std::string& path) {
    return openSqliteThroughUnix(path);
}

std::unique_ptr<Connection> openAccessFile(const std::string& path, const std::string& shown) {
    return openAccessThroughUnix(path, shown);
}

}  // namespace tandril::platform
