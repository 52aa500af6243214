#pragma once

#include <string>

namespace tandril::platform {

// Shows an address in the browser that the user prefers. Returns false when none can be started.
bool openInBrowser(const std::string& address);

}  // namespace tandril::platform
