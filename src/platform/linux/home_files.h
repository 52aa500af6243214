#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace tandril::platform {

// The files of a home folder, which stands for drive "C:": "C:\Vorn Tandril\log.txt" is
// "<home>/Vorn Tandril/log.txt". The drive is there exactly when the folder is. A path that might
// lead out of the home names nothing, and whatever needs it is a fault. Paths compare in their
// case, as the file system does. Plain text files are UTF-8.
class HomeFiles final : public FileSystem {
  public:
    explicit HomeFiles(std::string home) : home_(std::move(home)) {}

    bool driveExists(std::string_view drive) const override;
    bool folderExists(std::string_view path) const override;
    bool fileExists(std::string_view path) const override;
    void createFolder(std::string_view path) override;
    std::string read(std::string_view path) const override;
    void replace(std::string_view path, const Content& content, Durability durability) override;
    void replaceTogether(std::span<const NewContent> files) override;
    void append(std::string_view path, const Content& content) override;
    void rename(std::string_view from, std::string_view to) override;
    std::vector<std::string> fileNames(std::string_view folder) const override;
    std::string typeDescription(std::string_view path) const override;
    std::string systemFolder() const override;
    std::string encodeAnsi(std::string text) const override;
    std::string decodeAnsi(std::string_view bytes) const override;

    // Where the system path lies on this machine, nothing when it might lead out of the home.
    std::optional<std::string> realPath(std::string_view path) const;

  private:
    std::string requirePath(std::string_view what, std::string_view path) const;

    std::string home_;
};

}  // namespace tandril::platform
