#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace tandril::platform {

// The files of drive "C:", or of a folder that stands for it. Paths are taken to the letter: a name
// that Windows would read as a device ("NUL") or shorten ("a.") is the name of a file like others.
// A path that leads elsewhere than below the drive names nothing, and whatever needs it is a fault.
class DriveFiles : public FileSystem {
  public:
    // `root` stands for the drive; without a backslash at its end.
    explicit DriveFiles(std::wstring root = L"C:") : root_(std::move(root)) {}

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

    // The path in the form that starting a program takes; nothing when it leads elsewhere.
    std::optional<std::wstring> plainPath(std::string_view path) const;

  private:
    std::optional<std::wstring> literalPath(std::string_view path) const;
    std::wstring requirePath(std::string_view what, std::string_view path) const;

    std::wstring root_;
};

}  // namespace tandril::platform
