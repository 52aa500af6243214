#include "platform/linux/shell.h"

#include <iostream>

#include "platform/linux/detached_process.h"
#include "platform/system_path.h"

namespace tandril::platform {

bool DesktopShell::start(std::string_view folder, std::string_view name) {
    if (!isPlainFileName(name)) return false;
    const std::string path = std::string(folder) + "\\" + std::string(name);
    const auto realFolder = files_.realPath(folder);
    const auto program = files_.realPath(path);
    if (!realFolder || !program || !files_.fileExists(path)) return false;
    return startDetached(*program, {}, *realFolder);
}

void DesktopShell::showCritical(std::string_view title, std::string_view prompt) {
    std::cerr << title << ": " << prompt << std::endl;
}

}  // namespace tandril::platform
