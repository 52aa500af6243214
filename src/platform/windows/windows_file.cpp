#include "platform/windows/windows_file.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "platform/temporary_names.h"
#include "platform/windows/handle.h"
#include "platform/windows/system_fault.h"
#include "platform/windows/wide.h"

namespace tandril::platform {
namespace {

// What is done to which file, for the message of the fault when a step of it fails.
struct Attempt {
    std::string_view what;
    std::string_view shown;
    [[noreturn]] void fail(DWORD error) const { throwSystemFault(what, shown, error); }
    [[noreturn]] void failWithLastError() const { fail(::GetLastError()); }
};

// Why the file there could not be opened. Of a folder Windows says what it says of missing rights.
[[noreturn]] void failToOpen(const std::wstring& path, const Attempt& attempt) {
    const DWORD error = ::GetLastError();
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    const bool isFolder =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    attempt.fail(isFolder ? directoryNotSupported : error);
}

constexpr DWORD largestPiece = 1U << 20U;

// Returns 0, or the error that ended the writing.
DWORD writeAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto piece =
            static_cast<DWORD>(std::min<std::size_t>(bytes.size(), std::size_t{largestPiece}));
        DWORD written = 0;
        if (!::WriteFile(file, bytes.data(), piece, &written, nullptr)) return ::GetLastError();
        bytes.remove_prefix(written);
    }
    return 0;
}

// Moves a file by a function that says whether it could. Virus scanners and indexers open a new
// file for an instant, and nobody can move it meanwhile.
template <class Move>
bool retryMove(const Move& move) {
    constexpr int tries = 10;
    constexpr DWORD pause = 20;  // milliseconds
    for (int attempt = 1;; ++attempt) {
        if (move()) return true;
        const DWORD error = ::GetLastError();
        const bool mayPass = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
        if (!mayPass || attempt == tries) {
            ::SetLastError(error);
            return false;
        }
        ::Sleep(pause);
    }
}

// What names the place for an open file that is to replace the one there.
std::vector<std::byte> renameOrder(const std::wstring& path) {
    const std::size_t length = path.size() * sizeof(wchar_t);
    std::vector<std::byte> order(sizeof(FILE_RENAME_INFO) + length);
    auto& info = *::new (order.data()) FILE_RENAME_INFO{};
    info.ReplaceIfExists = TRUE;
    info.FileNameLength = static_cast<DWORD>(length);
    std::memcpy(info.FileName, path.data(), length);
    return order;
}

// A new file beside the one to replace. Removed when destroyed, unless renamed before.
//
// It is open, and as such cannot be removed, for as long as it has its temporary name: what can be
// removed under such a name is what a killed process left, and goes when the same target is
// replaced the next time.
class TemporaryFile {
  public:
    TemporaryFile(const std::wstring& target, Durability durability, const Attempt& attempt)
        : attempt_(attempt), durable_(durability == Durability::Durable), file_(create(target)) {}
    ~TemporaryFile() {
        file_.close();
        if (!renamed_) ::DeleteFileW(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(const Content& content) {
        content.writeTo([this](std::string_view piece) {
            if (const DWORD error = writeAll(file_.get(), piece)) attempt_.fail(error);
        });
        if (durable_ && !::FlushFileBuffers(file_.get())) attempt_.failWithLastError();
    }

    // By its handle, which also carries over that the rename is to be on the disk.
    void renameTo(const std::wstring& path) {
        std::vector<std::byte> order = renameOrder(path);
        const auto size = static_cast<DWORD>(order.size());
        if (!retryMove([&] {
                return ::SetFileInformationByHandle(file_.get(), FileRenameInfo, order.data(),
                                                    size) != 0;
            })) {
            attempt_.failWithLastError();
        }
        renamed_ = true;
        file_.close();
    }

  private:
    Handle create(const std::wstring& target) {
        const std::size_t nameAt = target.rfind(L'\\') + 1;
        const std::wstring folder = target.substr(0, nameAt);
        const std::string name = toUtf8(target.substr(nameAt));
        for (int number = 1; number <= temporaryNames; ++number) {
            ::DeleteFileW((folder + toWide(temporaryName(name, number))).c_str());
        }
        for (int number = 1; number <= temporaryNames; ++number) {
            Handle file = open(folder + toWide(temporaryName(name, number)));
            if (file.valid()) return file;
        }
        for (;;) {
            Handle file = open(folder + toWide(randomTemporaryName()));
            if (file.valid()) return file;
            if (::GetLastError() != ERROR_FILE_EXISTS) attempt_.failWithLastError();
        }
    }

    Handle open(std::wstring path) {
        path_ = std::move(path);
        return Handle(::CreateFileW(
            path_.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr, CREATE_NEW,
            durable_ ? FILE_FLAG_WRITE_THROUGH : FILE_ATTRIBUTE_NORMAL, nullptr));
    }

    Attempt attempt_;
    bool durable_;
    std::wstring path_;
    Handle file_;
    bool renamed_ = false;
};

// A rename would not tell for certain.
void requireReplaceable(const std::wstring& path, const Attempt& attempt) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) attempt.fail(directoryNotSupported);
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) attempt.fail(ERROR_ACCESS_DENIED);
}

// A replacement in the making: written beside the file, then put in its place.
class Replacing {
  public:
    Replacing(const Replacement& file, Durability durability)
        : attempt_{"write", file.shown}, path_(file.path) {
        requireReplaceable(path_, attempt_);
        temporary_.emplace(path_, durability, attempt_);
        temporary_->write(file.content);
    }

    void takePlace() { temporary_->renameTo(path_); }

  private:
    Attempt attempt_;
    std::wstring path_;
    std::optional<TemporaryFile> temporary_;
};

}  // namespace

std::string readFile(const std::wstring& path, std::string_view shown) {
    const Attempt attempt{"read", shown};
    const Handle file(::CreateFileW(path.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file.valid()) failToOpen(path, attempt);
    std::string content;
    for (;;) {
        const std::size_t before = content.size();
        content.resize(before + largestPiece);
        DWORD count = 0;
        if (!::ReadFile(file.get(), content.data() + before, largestPiece, &count, nullptr)) {
            attempt.failWithLastError();
        }
        content.resize(before + count);
        if (count == 0) return content;
    }
}

void replaceFile(const std::wstring& path, std::string_view shown, const Content& content,
                 Durability durability) {
    Replacing({path, shown, content}, durability).takePlace();
}

void replaceFiles(std::span<const Replacement> files) {
    std::vector<std::unique_ptr<Replacing>> written;
    for (const Replacement& file : files) {
        written.push_back(std::make_unique<Replacing>(file, Durability::Durable));
    }
    for (const auto& file : written) file->takePlace();
}

void appendFile(const std::wstring& path, std::string_view shown, const Content& content) {
    const Attempt attempt{"append to", shown};
    const Handle file(::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER end{};
    if (!file.valid()) failToOpen(path, attempt);
    if (!::SetFilePointerEx(file.get(), {}, &end, FILE_END)) attempt.failWithLastError();
    try {
        content.writeTo([&](std::string_view piece) {
            if (const DWORD error = writeAll(file.get(), piece)) attempt.fail(error);
        });
    } catch (...) {
        // Not half a line: as it was.
        ::SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN);
        ::SetEndOfFile(file.get());
        throw;
    }
}

void renameFile(const std::wstring& from, const std::wstring& to, std::string_view what,
                std::string_view shown) {
    constexpr DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (!retryMove([&] { return ::MoveFileExW(from.c_str(), to.c_str(), how) != 0; })) {
        throwSystemFault(what, shown, ::GetLastError());
    }
}

}  // namespace tandril::platform
