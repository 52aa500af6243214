#include "host/home_lock.h"

#include <filesystem>
#include <system_error>

#include "component/paths.h"
#include "platform/fault.h"
#include "platform/machine.h"
#include "platform/utf8_path.h"

namespace tandril::host {
namespace {

namespace fs = std::filesystem;

// On the machine itself, what its users share is the install folder. Only the page's first call
// would make it.
fs::path folderOf(const std::string& home) {
    if (!home.empty()) {
        return platform::pathFromUtf8(home);
    }
    fs::path folder = platform::pathFromUtf8(platform::hostPath(home, paths::installFolder));
    std::error_code error;
    fs::create_directory(folder, error);
    return folder;
}

std::string lockFile(const std::string& home) {
    const fs::path folder = folderOf(home);
    if (!fs::is_directory(folder)) {
        throw Fault("there is no home folder " + platform::utf8FromPath(folder));
    }
    return platform::utf8FromPath(folder / "host.lock");
}

}  // namespace

HomeLock::HomeLock(const std::string& home) : lock_(lockFile(home)) {
    if (!lock_.isHeld()) {
        throw Fault((home.empty() ? "this machine" : "the home " + home) +
                    " is already served by " +
                    (lock_.holder().empty() ? "another process" : "process " + lock_.holder()));
    }
}

}  // namespace tandril::host
