#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/windows/drive_files.h"

namespace tandril::platform {

// The files of a home folder, which stands for drive "C:". What this very machine is like does not
// show in them: homes are the same on every system.
class HomeFiles final : public DriveFiles {
  public:
    // An absolute path.
    explicit HomeFiles(const std::wstring& home) : DriveFiles(home) {}

    std::string typeDescription(std::string_view path) const override;
    std::string systemFolder() const override { return "C:\\WINDOWS\\system32"; }
    std::string encodeAnsi(std::string text) const override { return text; }
    std::string decodeAnsi(std::string_view bytes) const override { return std::string(bytes); }

    // Where the system path lies on this machine, nothing when it might lead out of the home.
    std::optional<std::string> realPath(std::string_view path) const;
};

}  // namespace tandril::platform
