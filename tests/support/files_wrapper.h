#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "support/memory_files.h"

namespace tandril::test {

// Forwards every call to another file system, so that a test can override one function.
class FilesWrapper : public platform::FileSystem {
  public:
    explicit FilesWrapper(platform::FileSystem& target) : target_(target) {}

    bool driveExists(std::string_view drive) const override { return target_.driveExists(drive); }
    bool folderExists(std::string_view path) const override { return target_.folderExists(path); }
    bool fileExists(std::string_view path) const override { return target_.fileExists(path); }
    void createFolder(std::string_view path) override { target_.createFolder(path); }
    std::string read(std::string_view path) const override { return target_.read(path); }
    void replace(std::string_view path, const platform::Content& content,
                 platform::Durability durability) override {
        target_.replace(path, content, durability);
    }
    void replaceTogether(std::span<const platform::NewContent> files) override {
        target_.replaceTogether(files);
    }
    void append(std::string_view path, const platform::Content& content) override {
        target_.append(path, content);
    }
    void rename(std::string_view from, std::string_view to) override { target_.rename(from, to); }
    std::vector<std::string> fileNames(std::string_view folder) const override {
        return target_.fileNames(folder);
    }
    std::string typeDescription(std::string_view path) const override {
        return target_.typeDescription(path);
    }
    std::string systemFolder() const override { return target_.systemFolder(); }
    std::string encodeAnsi(std::string text) const override {
        return target_.encodeAnsi(std::move(text));
    }
    std::string decodeAnsi(std::string_view bytes) const override {
        return target_.decodeAnsi(bytes);
    }

  private:
    platform::FileSystem& target_;
};

// A file system on which chosen operations fail, leaving everything as it was.
class FaultyFiles : public FilesWrapper {
  public:
    using FilesWrapper::FilesWrapper;

    // The `nth` operation of this kind from now on, the first one being 1, throws Fault with the
    // text "injected fault". Every other one goes through.
    void failOn(FileOperation operation, int nth);

    void createFolder(std::string_view path) override;
    std::string read(std::string_view path) const override;
    void replace(std::string_view path, const platform::Content& content,
                 platform::Durability durability) override;
    // Counts as a Replace of each file.
    void replaceTogether(std::span<const platform::NewContent> files) override;
    void append(std::string_view path, const platform::Content& content) override;
    void rename(std::string_view from, std::string_view to) override;
    std::vector<std::string> fileNames(std::string_view folder) const override;

  private:
    void pass(FileOperation operation) const;

    mutable std::map<FileOperation, int> left_;  // operations up to the one that fails
};

}  // namespace tandril::test
