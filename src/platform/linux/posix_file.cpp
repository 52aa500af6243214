#include "platform/linux/posix_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

#include "platform/fault.h"
#include "platform/linux/descriptor.h"
#include "platform/linux/temporary_file.h"

namespace tandril::platform {
namespace {

// Opens a regular file. Without O_NONBLOCK the open itself would wait at a pipe.
Descriptor openRegular(const std::string& path, int flags, const Attempt& attempt) {
    Descriptor file(::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK));
    if (!file.valid()) attempt.fail(errno);
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) attempt.fail(errno);
    if (S_ISDIR(status.st_mode)) attempt.fail(EISDIR);
    if (!S_ISREG(status.st_mode)) attempt.fail(EINVAL);
    return file;
}

std::size_t sizeOf(const Descriptor& file, const Attempt& attempt) {
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) attempt.fail(errno);
    return static_cast<std::size_t>(status.st_size);
}

// Not every file system can synchronise a folder; those that cannot say EINVAL.
void syncFolder(int folder, const Attempt& attempt) {
    if (::fsync(folder) != 0 && errno != EINVAL) attempt.fail(errno);
}

// The permissions of the file to replace; nothing that could be replaced has none.
mode_t permissionsToKeep(int folder, const std::string& name, const Attempt& attempt) {
    struct stat status {};
    if (::fstatat(folder, name.c_str(), &status, 0) != 0) return 0;
    if (S_ISDIR(status.st_mode)) attempt.fail(EISDIR);
    // A rename would replace a write-protected file without a word.
    if (::faccessat(folder, name.c_str(), W_OK, AT_EACCESS) != 0) attempt.fail(errno);
    return status.st_mode & 07777;
}

// A replacement in the making: written beside the file, then put in its place.
class Replacing {
  public:
    Replacing(const Replacement& file, Durability durability)
        : attempt_{"write", file.shown},
          name_(file.path.substr(file.path.rfind('/') + 1)),
          folder_(::open(file.path.substr(0, file.path.rfind('/') + 1).c_str(),
                         O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (!folder_.valid()) attempt_.fail(errno);
        const mode_t kept = permissionsToKeep(folder_.get(), name_, attempt_);
        temporary_.emplace(folder_.get(), name_, 0666, attempt_);
        if (kept != 0 && ::fchmod(temporary_->descriptor(), kept) != 0) attempt_.fail(errno);
        temporary_->write(file.content, durability);
    }

    void takePlace() { temporary_->renameTo(name_); }
    void sync(Durability durability) const {
        if (durability == Durability::Durable) syncFolder(folder_.get(), attempt_);
    }

  private:
    Attempt attempt_;
    std::string name_;
    Descriptor folder_;
    std::optional<TemporaryFile> temporary_;
};

}  // namespace

void throwSystemFault(std::string_view what, std::string_view shown, int error) {
    throw Fault("cannot " + std::string(what) + " \"" + std::string(shown) +
                "\": " + std::generic_category().message(error));
}

std::string readFile(const std::string& path, std::string_view shown) {
    const Attempt attempt{"read", shown};
    const Descriptor file = openRegular(path, O_RDONLY, attempt);
    // One more than the size, so that the end is found without growing.
    std::string content(sizeOf(file, attempt) + 1, '\0');
    std::size_t length = 0;
    for (;;) {
        const ssize_t count = ::read(file.get(), content.data() + length, content.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) attempt.fail(errno);
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
        // Another program may make the file longer meanwhile.
        if (length == content.size()) content.resize(2 * length);
    }
    content.resize(length);
    return content;
}

void replaceFile(const std::string& path, std::string_view shown, const Content& content,
                 Durability durability) {
    Replacing file({path, shown, content}, durability);
    file.takePlace();
    file.sync(durability);
}

void replaceFiles(std::span<const Replacement> files) {
    std::vector<std::unique_ptr<Replacing>> written;
    for (const Replacement& file : files) {
        written.push_back(std::make_unique<Replacing>(file, Durability::Durable));
    }
    for (const auto& file : written) file->takePlace();
    for (const auto& file : written) file->sync(Durability::Durable);
}

void appendFile(const std::string& path, std::string_view shown, const Content& content) {
    const Attempt attempt{"append to", shown};
    const Descriptor file = openRegular(path, O_WRONLY | O_APPEND, attempt);
    const std::size_t before = sizeOf(file, attempt);
    try {
        content.writeTo([&](std::string_view piece) {
            if (const int error = writeAll(file.get(), piece)) attempt.fail(error);
        });
    } catch (...) {
        // Not half a line: as it was.
        if (::ftruncate(file.get(), static_cast<off_t>(before)) != 0) attempt.fail(errno);
        throw;
    }
}

}  // namespace tandril::platform
