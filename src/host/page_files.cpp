#include "host/page_files.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>

#include "platform/ascii.h"
#include "platform/fault.h"
#include "platform/real_path.h"
#include "platform/utf8_path.h"

namespace tandril::host {
namespace {

namespace fs = std::filesystem;

struct MediaType {
    std::string_view extension;
    std::string_view contentType;
};

constexpr std::array mediaTypes{
    MediaType{".html", "text/html; charset=utf-8"},
    MediaType{".css", "text/css; charset=utf-8"},
    MediaType{".js", "text/javascript; charset=utf-8"},
    MediaType{".mjs", "text/javascript; charset=utf-8"},
    MediaType{".json", "application/json"},
    MediaType{".webmanifest", "application/manifest+json"},
    MediaType{".xml", "application/xml"},
    MediaType{".txt", "text/plain; charset=utf-8"},
    MediaType{".svg", "image/svg+xml"},
    MediaType{".png", "image/png"},
    MediaType{".gif", "image/gif"},
    MediaType{".jpg", "image/jpeg"},
    MediaType{".jpeg", "image/jpeg"},
    MediaType{".webp", "image/webp"},
    MediaType{".ico", "image/vnd.microsoft.icon"},
    MediaType{".woff", "font/woff"},
    MediaType{".woff2", "font/woff2"},
};

// Whether the file lies in the folder, and in no hidden one there: Windows knows that by a second
// name, which has no dot.
bool isShownBelow(const fs::path& file, const fs::path& folder) {
    const auto ends = std::ranges::mismatch(folder, file);
    return ends.in1 == folder.end() && std::all_of(ends.in2, file.end(), [](const fs::path& name) {
               return !platform::utf8FromPath(name).starts_with('.');
           });
}

// Hidden names, and those under which Windows would find another file than the one of that name.
bool isPlainName(std::string_view name) {
    return !name.empty() && !name.starts_with('.') && !name.ends_with('.') &&
           !name.ends_with(' ') && name.find_first_of(":*?\"<>|\\") == std::string_view::npos;
}

bool hasOnlyPlainNames(std::string_view path) {
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::string_view name = path.substr(0, path.find('/'));
        if (!isPlainName(name)) {
            return false;
        }
        path.remove_prefix(name.size());
    }
    return true;
}

Response notFound() {
    return textResponse(404, "there is no such page");
}

}  // namespace

PageFiles::PageFiles(const fs::path& folder) {
    folder_ = platform::realPath(folder).value_or(fs::path());
    if (folder_.empty() || find("/").empty()) {
        throw Fault("there is no page in the folder " + platform::utf8FromPath(folder) +
                    ": it has no index.html; --page names another one");
    }
}

Response PageFiles::answer(std::string_view path) const {
    const fs::path file = find(path);
    if (file.empty()) {
        return notFound();
    }
    const std::ifstream in(file, std::ios::binary);
    if (!in.is_open()) {
        return notFound();
    }
    std::ostringstream content;
    content << in.rdbuf();
    return {200,
            std::string(contentTypeOf(platform::utf8FromPath(file))),
            std::move(content).str(),
            {}};
}

fs::path PageFiles::find(std::string_view path) const {
    const std::string_view wanted = path == "/" ? "/index.html" : path;
    if (!hasOnlyPlainNames(wanted)) {
        return {};
    }
    const auto file = platform::realPath(folder_ / platform::pathFromUtf8(wanted.substr(1)));
    std::error_code error;
    if (!file || !isShownBelow(*file, folder_) || !fs::is_regular_file(*file, error)) {
        return {};
    }
    return *file;
}

std::string_view contentTypeOf(std::string_view name) {
    const std::string folded = platform::foldAscii(name);
    const auto* row = std::ranges::find_if(
        mediaTypes, [&folded](const MediaType& type) { return folded.ends_with(type.extension); });
    return row != mediaTypes.end() ? row->contentType : "application/octet-stream";
}

}  // namespace tandril::host
