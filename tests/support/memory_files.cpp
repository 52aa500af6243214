#include "support/memory_files.h"

#include <algorithm>

#include "platform/fault.h"
#include "platform/system_path.h"

namespace tandril::test {
namespace {

// The path with the drive in capitals and no backslash at the end; "" when it names nothing.
std::string normal(std::string_view path) {
    const auto parts = platform::systemPathParts(path);
    if (!parts) return "";
    std::string whole = "C:";
    for (const std::string& part : *parts) whole.append("\\").append(part);
    return whole;
}

std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('\\'));
}

std::string whole(const platform::Content& content) {
    std::string bytes;
    content.writeTo([&](std::string_view piece) { bytes += piece; });
    return bytes;
}

}  // namespace

bool MemoryFiles::driveExists(std::string_view drive) const {
    return drive.size() == 2 && folderExists(drive);
}

bool MemoryFiles::folderExists(std::string_view path) const {
    const std::string whole = normal(path);
    return drive_ && (whole == "C:" || folders_.contains(whole));
}

bool MemoryFiles::fileExists(std::string_view path) const {
    return files_.contains(normal(path));
}

void MemoryFiles::createFolder(std::string_view path) {
    calls_.push_back({FileOperation::CreateFolder, std::string(path)});
    const std::string whole = normal(path);
    if (whole.empty() || !folderExists(folderOf(whole)) || folderExists(whole) ||
        fileExists(whole)) {
        throw Fault("cannot create the folder \"" + std::string(path) + "\"");
    }
    folders_.insert(whole);
}

// The file's whole path; a fault when there is no such file.
std::string MemoryFiles::require(std::string_view path) const {
    if (!fileExists(path)) throw Fault("there is no file \"" + std::string(path) + "\"");
    return normal(path);
}

std::string MemoryFiles::read(std::string_view path) const {
    calls_.push_back({FileOperation::Read, std::string(path)});
    return files_.at(require(path));
}

void MemoryFiles::replace(std::string_view path, const platform::Content& content,
                          platform::Durability durability) {
    calls_.push_back({FileOperation::Replace, std::string(path), durability});
    const std::string target = normal(path);
    if (target.empty() || !folderExists(folderOf(target)) || folderExists(target)) {
        throw Fault("cannot write \"" + std::string(path) + "\"");
    }
    files_[target] = whole(content);
}

void MemoryFiles::replaceTogether(std::span<const platform::NewContent> files) {
    const std::map<std::string, std::string> before = files_;
    try {
        for (const platform::NewContent& file : files) {
            replace(file.path, file.content, platform::Durability::Durable);
        }
    } catch (const Fault&) {
        files_ = before;
        throw;
    }
}

void MemoryFiles::append(std::string_view path, const platform::Content& content) {
    calls_.push_back({FileOperation::Append, std::string(path)});
    files_.at(require(path)) += whole(content);
}

void MemoryFiles::rename(std::string_view from, std::string_view to) {
    calls_.push_back({FileOperation::Rename, std::string(from)});
    const std::string source = require(from);
    const std::string target = normal(to);
    if (target.empty() || folderOf(source) != folderOf(target) || folderExists(target)) {
        throw Fault("cannot rename \"" + source + "\" to \"" + std::string(to) + "\"");
    }
    if (source == target) return;
    files_[target] = std::move(files_.at(source));
    files_.erase(source);
}

std::vector<std::string> MemoryFiles::fileNames(std::string_view folder) const {
    calls_.push_back({FileOperation::List, std::string(folder)});
    const std::string whole = normal(folder);
    std::vector<std::string> names;
    for (const auto& [path, bytes] : files_) {
        if (folderOf(path) == whole) names.push_back(path.substr(whole.size() + 1));
    }
    return names;
}

std::string MemoryFiles::typeDescription(std::string_view path) const {
    return platform::describeFileType(path);
}

std::string MemoryFiles::systemFolder() const {
    return "C:\\WINDOWS\\system32";
}

std::string MemoryFiles::encodeAnsi(std::string text) const {
    return text;
}

std::string MemoryFiles::decodeAnsi(std::string_view bytes) const {
    return std::string(bytes);
}

void MemoryFiles::removeDrive() {
    drive_ = false;
    folders_.clear();
    files_.clear();
}

void MemoryFiles::put(std::string_view path, std::string_view bytes) {
    const std::string whole = normal(path);
    if (whole.empty()) throw Fault("a test puts a file at \"" + std::string(path) + "\"");
    for (std::string folder = folderOf(whole); folder != "C:"; folder = folderOf(folder)) {
        folders_.insert(folder);
    }
    files_[whole] = bytes;
}

void MemoryFiles::remove(std::string_view path) {
    files_.erase(normal(path));
}

std::string MemoryFiles::content(std::string_view path) const {
    const auto found = files_.find(normal(path));
    return found == files_.end() ? "(no file)" : found->second;
}

int MemoryFiles::count(FileOperation operation) const {
    return static_cast<int>(std::count_if(calls_.begin(), calls_.end(), [&](const FileCall& call) {
        return call.operation == operation;
    }));
}

int MemoryFiles::count(FileOperation operation, std::string_view path) const {
    return static_cast<int>(std::count_if(calls_.begin(), calls_.end(), [&](const FileCall& call) {
        return call.operation == operation && call.path == path;
    }));
}

}  // namespace tandril::test
