#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace tandril::test {

enum class FileOperation { CreateFolder, Read, Replace, Append, Rename, List };

struct FileCall {
    FileOperation operation;
    std::string path;
    platform::Durability durability = platform::Durability::Relaxed;  // of a Replace only
};

// Files in memory, on the system's own paths. Drive "C:" is there from the start and is empty.
// Records the calls in their order, those that fault included.
class MemoryFiles : public platform::FileSystem {
  public:
    bool driveExists(std::string_view drive) const override;
    bool folderExists(std::string_view path) const override;
    bool fileExists(std::string_view path) const override;
    void createFolder(std::string_view path) override;
    std::string read(std::string_view path) const override;
    void replace(std::string_view path, const platform::Content& content,
                 platform::Durability durability) override;
    void replaceTogether(std::span<const platform::NewContent> files) override;
    void append(std::string_view path, const platform::Content& content) override;
    void rename(std::string_view from, std::string_view to) override;
    std::vector<std::string> fileNames(std::string_view folder) const override;
    std::string typeDescription(std::string_view path) const override;
    std::string systemFolder() const override;
    std::string encodeAnsi(std::string text) const override;
    std::string decodeAnsi(std::string_view bytes) const override;

    // Takes the drive away, with everything on it.
    void removeDrive();
    // Makes a file with its folders, unrecorded, as if it had been there all along.
    void put(std::string_view path, std::string_view bytes);
    // Takes a file away, unrecorded.
    void remove(std::string_view path);
    // Content of a file, unrecorded; "(no file)" when there is none.
    std::string content(std::string_view path) const;

    const std::vector<FileCall>& calls() const { return calls_; }
    // Number of calls of this kind, on any file or on this one.
    int count(FileOperation operation) const;
    int count(FileOperation operation, std::string_view path) const;
    void forgetCalls() { calls_.clear(); }

  private:
    std::string require(std::string_view path) const;

    bool drive_ = true;
    std::set<std::string> folders_;
    std::map<std::string, std::string> files_;
    mutable std::vector<FileCall> calls_;
};

}  // namespace tandril::test
