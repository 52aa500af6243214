#include "platform/linux/home_files.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>

#include "platform/fault.h"
#include "platform/linux/posix_file.h"
#include "platform/system_path.h"

namespace tandril::platform {
namespace {

enum class Found { Nothing, File, Folder };

Found find(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return Found::Nothing;
    return S_ISDIR(status.st_mode) ? Found::Folder : Found::File;
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

std::string_view folderOf(std::string_view path) {
    return path.substr(0, path.rfind('/'));
}

}  // namespace

std::optional<std::string> HomeFiles::realPath(std::string_view path) const {
    const auto parts = systemPathParts(path);
    if (!parts) return std::nullopt;
    std::string real = home_;
    for (const std::string& part : *parts) real.append("/").append(part);
    return real;
}

std::string HomeFiles::requirePath(std::string_view what, std::string_view path) const {
    if (auto real = realPath(path)) return *std::move(real);
    throwSystemFault(what, path, EINVAL);
}

bool HomeFiles::driveExists(std::string_view drive) const {
    return drive.size() == 2 && folderExists(drive);
}

bool HomeFiles::folderExists(std::string_view path) const {
    const auto real = realPath(path);
    return real && find(*real) == Found::Folder;
}

bool HomeFiles::fileExists(std::string_view path) const {
    const auto real = realPath(path);
    return real && find(*real) == Found::File;
}

void HomeFiles::createFolder(std::string_view path) {
    constexpr std::string_view task = "create the folder";
    if (::mkdir(requirePath(task, path).c_str(), 0777) != 0) throwSystemFault(task, path, errno);
}

std::string HomeFiles::read(std::string_view path) const {
    return readFile(requirePath("read", path), path);
}

void HomeFiles::replace(std::string_view path, const Content& content, Durability durability) {
    replaceFile(requirePath("write", path), path, content, durability);
}

void HomeFiles::replaceTogether(std::span<const NewContent> files) {
    std::vector<Replacement> replacements;
    for (const NewContent& file : files) {
        replacements.push_back({requirePath("write", file.path), file.path, file.content});
    }
    replaceFiles(replacements);
}

void HomeFiles::append(std::string_view path, const Content& content) {
    appendFile(requirePath("append to", path), path, content);
}

void HomeFiles::rename(std::string_view from, std::string_view to) {
    constexpr std::string_view task = "rename";
    const std::string source = requirePath(task, from);
    const std::string target = requirePath(task, to);
    if (folderOf(source) != folderOf(target)) throwSystemFault(task, from, EXDEV);
    if (find(source) == Found::Folder) throwSystemFault(task, from, EISDIR);
    if (std::rename(source.c_str(), target.c_str()) != 0) throwSystemFault(task, from, errno);
}

std::vector<std::string> HomeFiles::fileNames(std::string_view folder) const {
    std::vector<std::string> names;
    const auto real = realPath(folder);
    if (!real || find(*real) != Found::Folder) return names;
    const std::unique_ptr<DIR, CloseFolder> open(::opendir(real->c_str()));
    if (!open) throwSystemFault("list the folder", folder, errno);
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(open.get());
        if (entry == nullptr && errno != 0) throwSystemFault("list the folder", folder, errno);
        if (entry == nullptr) break;
        // A name with a backslash would read as a path, and as such name another file.
        if (isPlainFileName(entry->d_name) && find(*real + "/" + entry->d_name) == Found::File) {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string HomeFiles::typeDescription(std::string_view path) const {
    return describeFileType(path);
}

std::string HomeFiles::systemFolder() const {
    return "C:\\WINDOWS\\system32";
}

std::string HomeFiles::encodeAnsi(std::string text) const {
    return text;
}

std::string HomeFiles::decodeAnsi(std::string_view bytes) const {
    return std::string(bytes);
}

}  // namespace tandril::platform
