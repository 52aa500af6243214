#include "platform/windows/drive_files.h"

#include <windows.h>
// Needs the types of windows.h.
#include <shlwapi.h>

#include <algorithm>
#include <array>

#include "platform/fault.h"
#include "platform/system_path.h"
#include "platform/windows/system_fault.h"
#include "platform/windows/wide.h"
#include "platform/windows/windows_file.h"

namespace tandril::platform {
namespace {

enum class Found { Nothing, File, Folder };

Found find(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return Found::Nothing;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Found::Folder : Found::File;
}

// A search that FindFirstFile has begun.
class Search {
  public:
    explicit Search(const std::wstring& pattern)
        : handle_(::FindFirstFileW(pattern.c_str(), &entry_)) {}
    ~Search() {
        if (valid()) ::FindClose(handle_);
    }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
    bool next() { return ::FindNextFileW(handle_, &entry_) != 0; }
    const WIN32_FIND_DATAW& entry() const { return entry_; }

  private:
    WIN32_FIND_DATAW entry_{};
    HANDLE handle_;
};

std::wstring_view folderOf(std::wstring_view path) {
    return path.substr(0, path.rfind(L'\\'));
}

// What the shell has been told that files with this extension (".mdb") are.
std::optional<std::string> registeredType(const std::wstring& extension) {
    std::array<wchar_t, 256> text{};
    auto length = static_cast<DWORD>(text.size());
    const HRESULT result = ::AssocQueryStringW(ASSOCF_INIT_IGNOREUNKNOWN, ASSOCSTR_FRIENDLYDOCNAME,
                                               extension.c_str(), nullptr, text.data(), &length);
    if (FAILED(result) || text[0] == L'\0') return std::nullopt;
    return toUtf8(text.data());
}

}  // namespace

std::optional<std::wstring> DriveFiles::plainPath(std::string_view path) const {
    const auto parts = systemPathParts(path);
    if (!parts) return std::nullopt;
    std::wstring plain = root_;
    for (const std::string& part : *parts) {
        // Behind a colon stands the name of another stream of the same file.
        if (part.find(':') != std::string::npos) return std::nullopt;
        plain.append(L"\\").append(toWide(part));
    }
    // "C:" alone would be the drive's current folder.
    return parts->empty() ? plain + L"\\" : plain;
}

std::optional<std::wstring> DriveFiles::literalPath(std::string_view path) const {
    auto plain = plainPath(path);
    if (plain) plain->insert(0, L"\\\\?\\");
    return plain;
}

std::wstring DriveFiles::requirePath(std::string_view what, std::string_view path) const {
    if (auto real = literalPath(path)) return *std::move(real);
    throwSystemFault(what, path, ERROR_INVALID_NAME);
}

bool DriveFiles::driveExists(std::string_view drive) const {
    return drive.size() == 2 && folderExists(drive);
}

bool DriveFiles::folderExists(std::string_view path) const {
    const auto real = literalPath(path);
    return real && find(*real) == Found::Folder;
}

bool DriveFiles::fileExists(std::string_view path) const {
    const auto real = literalPath(path);
    return real && find(*real) == Found::File;
}

void DriveFiles::createFolder(std::string_view path) {
    constexpr std::string_view task = "create the folder";
    if (!::CreateDirectoryW(requirePath(task, path).c_str(), nullptr)) {
        throwSystemFault(task, path, ::GetLastError());
    }
}

std::string DriveFiles::read(std::string_view path) const {
    return readFile(requirePath("read", path), path);
}

void DriveFiles::replace(std::string_view path, const Content& content, Durability durability) {
    replaceFile(requirePath("write", path), path, content, durability);
}

void DriveFiles::replaceTogether(std::span<const NewContent> files) {
    std::vector<Replacement> replacements;
    for (const NewContent& file : files) {
        replacements.push_back({requirePath("write", file.path), file.path, file.content});
    }
    replaceFiles(replacements);
}

void DriveFiles::append(std::string_view path, const Content& content) {
    appendFile(requirePath("append to", path), path, content);
}

void DriveFiles::rename(std::string_view from, std::string_view to) {
    constexpr std::string_view task = "rename";
    const std::wstring source = requirePath(task, from);
    const std::wstring target = requirePath(task, to);
    if (folderOf(source) != folderOf(target)) throwSystemFault(task, from, ERROR_NOT_SAME_DEVICE);
    if (find(source) == Found::Folder || find(target) == Found::Folder) {
        throwSystemFault(task, from, directoryNotSupported);
    }
    renameFile(source, target, task, from);
}

std::vector<std::string> DriveFiles::fileNames(std::string_view folder) const {
    std::vector<std::string> names;
    const auto real = literalPath(folder);
    if (!real || find(*real) != Found::Folder) return names;
    Search search(*real + (real->back() == L'\\' ? L"*" : L"\\*"));
    if (!search.valid()) throwSystemFault("list the folder", folder, ::GetLastError());
    do {
        const WIN32_FIND_DATAW& entry = search.entry();
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            names.push_back(toUtf8(entry.cFileName));
        }
    } while (search.next());
    if (const DWORD error = ::GetLastError(); error != ERROR_NO_MORE_FILES) {
        throwSystemFault("list the folder", folder, error);
    }
    std::sort(names.begin(), names.end());
    return names;
}

// Windows would call an unknown ".abc" an "ABC File", but in its own language.
std::string DriveFiles::typeDescription(std::string_view path) const {
    const std::string_view name = path.substr(path.rfind('\\') + 1);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos) return describeFileType(path);
    return registeredType(toWide(name.substr(dot))).value_or(describeFileType(path));
}

std::string DriveFiles::systemFolder() const {
    std::array<wchar_t, MAX_PATH> path{};
    const UINT length = ::GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size()));
    if (length == 0 || length >= path.size()) {
        throw Fault("cannot find the system folder: " + systemErrorText(::GetLastError()));
    }
    return toUtf8({path.data(), length});
}

std::string DriveFiles::encodeAnsi(std::string text) const {
    if (text.empty() || ::GetACP() == CP_UTF8) return text;
    const std::wstring wide = toWide(text);
    const auto size = static_cast<int>(wide.size());
    constexpr DWORD noLookAlikes = WC_NO_BEST_FIT_CHARS;
    const int length =
        ::WideCharToMultiByte(CP_ACP, noLookAlikes, wide.data(), size, nullptr, 0, "?", nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    ::WideCharToMultiByte(CP_ACP, noLookAlikes, wide.data(), size, bytes.data(), length, "?",
                          nullptr);
    return bytes;
}

std::string DriveFiles::decodeAnsi(std::string_view bytes) const {
    if (bytes.empty()) return {};
    const auto size = static_cast<int>(bytes.size());
    const int length = ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, wide.data(), length);
    return toUtf8(wide);
}

}  // namespace tandril::platform
