#include "host/home_lock.h"

#include <filesystem>

#include "platform/fault.h"
#include "platform/utf8_path.h"

namespace tandril::host {
namespace {

std::string lockFile(const std::string& home) {
    const std::filesystem::path folder = platform::pathFromUtf8(home);
    if (!std::filesystem::is_directory(folder)) {
        throw Fault("there is no home folder " + home);
    }
    return platform::utf8FromPath(folder / "host.lock");
}

}  // namespace

HomeLock::HomeLock(const std::string& home) : lock_(lockFile(home)) {
    if (!lock_.isHeld()) {
        throw Fault("the home " + home + " is already served by " +
                    (lock_.holder().empty() ? "another process" : "process " + lock_.holder()));
    }
}

}  // namespace tandril::host
