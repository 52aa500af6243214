#include "platform/browser.h"

#include "platform/linux/detached_process.h"

namespace tandril::platform {

bool openInBrowser(const std::string& address) {
    return startDetached("xdg-open", {address}, "/");
}

}  // namespace tandril::platform
