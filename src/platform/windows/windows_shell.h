#pragma once

#include "platform/shell.h"
#include "platform/windows/drive_files.h"

namespace tandril::platform {

// Programs of the drive, and message boxes where there is a desktop to show them on.
class WindowsShell final : public Shell {
  public:
    explicit WindowsShell(const DriveFiles& files) : files_(files) {}

    bool start(std::string_view folder, std::string_view name) override;
    void showCritical(std::string_view title, std::string_view prompt) override;

  private:
    const DriveFiles& files_;
};

}  // namespace tandril::platform
