#include "support/memory_registry.h"

#include <algorithm>

#include "platform/ascii.h"
#include "platform/fault.h"
#include "platform/registry_number.h"

namespace tandril::test {

using platform::foldAscii;
using platform::RegistryRoot;

const MemoryRegistry::Key* MemoryRegistry::findKey(RegistryRoot root, std::string_view path) const {
    const auto found = std::find_if(keys_.begin(), keys_.end(), [&](const Key& key) {
        return key.root == root && foldAscii(key.path) == foldAscii(path);
    });
    return found == keys_.end() ? nullptr : &*found;
}

const MemoryRegistry::Value* MemoryRegistry::findValue(RegistryRoot root, std::string_view path,
                                                       std::string_view name) const {
    const Key* key = findKey(root, path);
    if (key == nullptr) return nullptr;
    const auto found = std::find_if(key->values.begin(), key->values.end(),
                                    [&](const Value& value) { return value.name == name; });
    return found == key->values.end() ? nullptr : &*found;
}

void MemoryRegistry::refresh() {
    keys_ = flushed_;
}

bool MemoryRegistry::keyExists(RegistryRoot root, std::string_view path) const {
    return path.empty() || findKey(root, path) != nullptr;
}

std::vector<std::string> MemoryRegistry::subKeys(RegistryRoot root, std::string_view path) const {
    const std::string prefix = path.empty() ? "" : foldAscii(path) + "\\";
    std::vector<std::string> names;
    for (const Key& key : keys_) {
        if (key.root != root || !foldAscii(key.path).starts_with(prefix)) continue;
        const std::string name = key.path.substr(prefix.size());
        if (name.find('\\') == std::string::npos) names.push_back(name);
    }
    return names;
}

std::vector<std::string> MemoryRegistry::valueNames(RegistryRoot root,
                                                    std::string_view path) const {
    std::vector<std::string> names;
    const Key* key = findKey(root, path);
    if (key == nullptr) return names;
    for (const Value& value : key->values) {
        if (!value.name.empty()) names.push_back(value.name);
    }
    return names;
}

std::optional<std::string> MemoryRegistry::read(RegistryRoot root, std::string_view path,
                                                std::string_view name) const {
    const Value* value = findValue(root, path, name);
    if (value == nullptr) return std::nullopt;
    if (const auto* number = std::get_if<std::uint32_t>(&value->data)) {
        return std::to_string(*number);
    }
    return std::get<std::string>(value->data);
}

void MemoryRegistry::createKey(RegistryRoot root, std::string_view path) {
    if (keyExists(root, path)) return;
    const std::size_t last = path.rfind('\\');
    std::string spelled(path);
    if (last != std::string_view::npos) {
        const std::string_view parent = path.substr(0, last);
        createKey(root, parent);
        spelled = findKey(root, parent)->path + std::string(path.substr(last));
    }
    keys_.push_back({root, spelled, {}});
}

void MemoryRegistry::set(RegistryRoot root, std::string_view path, std::string_view name,
                         Data data) {
    Key* key = const_cast<Key*>(findKey(root, path));
    if (key == nullptr) throw Fault("the registry has no key \"" + std::string(path) + "\"");
    for (Value& value : key->values) {
        if (value.name != name) continue;
        value.data = std::move(data);
        return;
    }
    key->values.push_back({std::string(name), std::move(data)});
}

void MemoryRegistry::setText(RegistryRoot root, std::string_view path, std::string_view name,
                             std::string_view text) {
    set(root, path, name, std::string(text));
}

void MemoryRegistry::setNumber(RegistryRoot root, std::string_view path, std::string_view name,
                               std::uint32_t number) {
    set(root, path, name, number);
}

bool MemoryRegistry::setExisting(RegistryRoot root, std::string_view path, std::string_view name,
                                 std::string_view text) {
    if (findValue(root, path, name) == nullptr) return false;
    if (isNumber(root, path, name)) {
        setNumber(root, path, name, platform::leadingNumber(text));
    } else {
        setText(root, path, name, text);
    }
    return true;
}

void MemoryRegistry::flush(platform::Durability durability) {
    if (keys_ == flushed_) return;
    if (failFlushes_) throw Fault("injected fault");
    flushed_ = keys_;
    saves_.push_back(durability);
}

bool MemoryRegistry::isNumber(RegistryRoot root, std::string_view path,
                              std::string_view name) const {
    const Value* value = findValue(root, path, name);
    return value != nullptr && std::holds_alternative<std::uint32_t>(value->data);
}

std::string MemoryRegistry::dump() const {
    std::string text;
    for (const Key& key : flushed_) {
        text.append(key.root == RegistryRoot::LocalMachine ? "HKLM\\" : "HKCU\\");
        text.append(key.path).append("\n");
        for (const Value& value : key.values) {
            text.append("  ").append(value.name).append("=");
            if (const auto* number = std::get_if<std::uint32_t>(&value.data)) {
                text.append("#").append(std::to_string(*number));
            } else {
                text.append(std::get<std::string>(value.data));
            }
            text.append("\n");
        }
    }
    return text;
}

}  // namespace tandril::test
