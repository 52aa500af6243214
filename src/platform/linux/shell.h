#pragma once

#include <string>

#include "platform/linux/home_files.h"
#include "platform/shell.h"

namespace tandril::platform {

// Starts programs that lie in a home folder, and shows messages on standard error, where nobody
// has to dismiss them. A started program has a session of its own and no part of this process's
// standard streams: on them the answers to callers travel.
class DesktopShell final : public Shell {
  public:
    explicit DesktopShell(std::string home) : files_(std::move(home)) {}

    bool start(std::string_view folder, std::string_view name) override;
    void showCritical(std::string_view title, std::string_view prompt) override;

  private:
    HomeFiles files_;
};

}  // namespace tandril::platform
