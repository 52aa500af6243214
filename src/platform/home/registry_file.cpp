#include "platform/home/registry_file.h"

#include "platform/fault.h"
#include "platform/home/host_file.h"

namespace tandril::platform {
namespace {

std::string fullKey(RegistryRoot root, std::string_view path) {
    std::string key =
        root == RegistryRoot::LocalMachine ? "HKEY_LOCAL_MACHINE" : "HKEY_CURRENT_USER";
    if (!path.empty()) key.append("\\").append(path);
    return key;
}

RegText parse(const std::string& path, const std::string& bytes) {
    try {
        return RegText(bytes);
    } catch (const Fault& fault) {
        throw Fault("cannot read the registry file \"" + path + "\": " + fault.what());
    }
}

}  // namespace

RegistryFile::Content& RegistryFile::content() const {
    if (!content_) {
        if (isHostFileMissing(path_)) {
            const RegText empty;
            content_ = Content{empty, empty.bytes()};
        } else {
            std::string bytes = readHostFile(path_);
            RegText text = parse(path_, bytes);
            content_ = Content{std::move(text), std::move(bytes)};
        }
    }
    return *content_;
}

void RegistryFile::refresh() {
    content_.reset();
}

bool RegistryFile::keyExists(RegistryRoot root, std::string_view path) const {
    return path.empty() || text().hasKey(fullKey(root, path));
}

std::vector<std::string> RegistryFile::subKeys(RegistryRoot root, std::string_view path) const {
    return text().subKeys(fullKey(root, path));
}

std::vector<std::string> RegistryFile::valueNames(RegistryRoot root, std::string_view path) const {
    return text().valueNames(fullKey(root, path));
}

std::optional<std::string> RegistryFile::read(RegistryRoot root, std::string_view path,
                                              std::string_view name) const {
    return text().read(fullKey(root, path), name);
}

void RegistryFile::createKey(RegistryRoot root, std::string_view path) {
    text().addKey(fullKey(root, path));
}

void RegistryFile::setText(RegistryRoot root, std::string_view path, std::string_view name,
                           std::string_view value) {
    text().setText(fullKey(root, path), name, value);
}

void RegistryFile::setNumber(RegistryRoot root, std::string_view path, std::string_view name,
                             std::uint32_t number) {
    text().setNumber(fullKey(root, path), name, number);
}

bool RegistryFile::setExisting(RegistryRoot root, std::string_view path, std::string_view name,
                               std::string_view value) {
    return text().setExisting(fullKey(root, path), name, value);
}

void RegistryFile::flush(Durability durability) {
    if (!content_) return;
    std::string bytes = content_->text.bytes();
    if (bytes == content_->saved) return;
    replaceHostFile(path_, bytes, durability);
    content_->saved = std::move(bytes);
}

}  // namespace tandril::platform
