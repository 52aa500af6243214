#include "platform/linux/temporary_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <utility>

#include "platform/temporary_names.h"

namespace tandril::platform {
namespace {

// How often all the known names are tried. A name that another process took for abandoned, while
// its file was being made, is free again at once.
constexpr int rounds = 25;

enum class Lock { Taken, Held, Unknown };

Lock lock(int file) {
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) return Lock::Taken;
    return errno == EWOULDBLOCK ? Lock::Held : Lock::Unknown;
}

// Whether the open file is the one of that name. Another process may have given that one its final
// name between the opening and the locking.
bool isNamed(int folder, const std::string& name, int file) {
    struct stat named {};
    struct stat opened {};
    return ::fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           ::fstat(file, &opened) == 0 && named.st_dev == opened.st_dev &&
           named.st_ino == opened.st_ino;
}

bool isRemoved(int file) {
    struct stat status {};
    return ::fstat(file, &status) != 0 || status.st_nlink == 0;
}

// Removes a temporary file that no process holds any more. What cannot be removed stays.
void removeAbandoned(int folder, const std::string& name) {
    // For writing, which network file systems ask of whoever wants the lock.
    const Descriptor file(
        ::openat(folder, name.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file.valid() && lock(file.get()) == Lock::Taken && isNamed(folder, name, file.get())) {
        ::unlinkat(folder, name.c_str(), 0);
    }
}

}  // namespace

TemporaryFile::TemporaryFile(int folder, std::string_view target, mode_t mode,
                             const Attempt& attempt)
    : folder_(folder), attempt_(attempt), file_(create(target, mode)) {}

// The lock goes with the descriptor, after the name.
TemporaryFile::~TemporaryFile() {
    if (!renamed_) ::unlinkat(folder_, name_.c_str(), 0);
}

void TemporaryFile::write(const Content& content, Durability durability) {
    content.writeTo([this](std::string_view piece) {
        if (const int error = writeAll(file_.get(), piece)) attempt_.fail(error);
    });
    if (durability == Durability::Durable && ::fsync(file_.get()) != 0) attempt_.fail(errno);
    // Some file systems report a failed write at a close only. A second descriptor can be closed
    // without giving up the lock.
    const int second = ::fcntl(file_.get(), F_DUPFD_CLOEXEC, 0);
    if (second < 0 || ::close(second) != 0) attempt_.fail(errno);
}

void TemporaryFile::renameTo(const std::string& name) {
    if (::renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) attempt_.fail(errno);
    renamed_ = true;
}

Descriptor TemporaryFile::create(std::string_view target, mode_t mode) {
    for (int number = 1; number <= temporaryNames; ++number) {
        removeAbandoned(folder_, temporaryName(target, number));
    }
    for (int attempt = 0; attempt < rounds * temporaryNames; ++attempt) {
        Descriptor file = claim(temporaryName(target, 1 + attempt % temporaryNames), mode);
        if (file.valid()) return file;
    }
    for (;;) {
        Descriptor file = open(randomTemporaryName(), mode);
        if (file.valid()) return file;
        if (errno != EEXIST) attempt_.fail(errno);
    }
}

// The new file, locked; an invalid descriptor when another process has the name.
Descriptor TemporaryFile::claim(std::string name, mode_t mode) {
    Descriptor file = open(std::move(name), mode);
    // Between the making and the locking the file looked abandoned to other processes.
    const bool isLost = file.valid() && (lock(file.get()) == Lock::Held || isRemoved(file.get()));
    return isLost ? Descriptor(-1) : std::move(file);
}

Descriptor TemporaryFile::open(std::string name, mode_t mode) {
    name_ = std::move(name);
    return Descriptor(
        ::openat(folder_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
}

}  // namespace tandril::platform
