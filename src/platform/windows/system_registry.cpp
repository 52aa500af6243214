#include "platform/windows/system_registry.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/registry_number.h"
#include "platform/windows/registry_key.h"
#include "platform/windows/system_fault.h"
#include "platform/windows/wide.h"

namespace tandril::platform {
namespace {

// The longest names that the registry has, with the zero behind them.
constexpr std::size_t longestKeyName = 256;
constexpr std::size_t longestValueName = 16384;

bool isMissing(LSTATUS status) {
    return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
}

[[noreturn]] void fail(const char* what, std::string_view shown, LSTATUS status) {
    throwSystemFault(std::string(what) + " the registry key", shown, static_cast<DWORD>(status));
}

// The key, or none when there is none.
RegistryKey openKey(HKEY root, std::string_view path, REGSAM rights) {
    RegistryKey key;
    const LSTATUS status = key.open(root, toWide(path), rights);
    if (status != ERROR_SUCCESS && !isMissing(status)) fail("open", path, status);
    return key;
}

struct Data {
    DWORD type = REG_NONE;
    std::vector<wchar_t> text;  // of any type, read as characters
};

bool isText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

// Names as they are stored; Windows itself finds a value in any case.
std::vector<std::wstring> namesOfValues(const RegistryKey& key) {
    std::vector<std::wstring> names;
    std::vector<wchar_t> name(longestValueName);
    for (DWORD index = 0;; ++index) {
        auto length = static_cast<DWORD>(name.size());
        if (::RegEnumValueW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr,
                            nullptr) != ERROR_SUCCESS) {
            return names;
        }
        names.emplace_back(name.data(), length);
    }
}

bool hasValue(const RegistryKey& key, const std::wstring& name) {
    const std::vector<std::wstring> names = namesOfValues(key);
    return std::find(names.begin(), names.end(), name) != names.end();
}

// The data may grow between the question for its size and the reading.
Data readData(const RegistryKey& key, const std::wstring& name, std::string_view path) {
    Data data;
    data.text.resize(256);
    for (;;) {
        auto size = static_cast<DWORD>(data.text.size() * sizeof(wchar_t));
        const LSTATUS status = ::RegQueryValueExW(key.get(), name.c_str(), nullptr, &data.type,
                                                  reinterpret_cast<BYTE*>(data.text.data()), &size);
        const std::size_t length = (size + sizeof(wchar_t) - 1) / sizeof(wchar_t);
        if (status == ERROR_SUCCESS) {
            data.text.resize(length);
            return data;
        }
        if (status != ERROR_MORE_DATA) fail("read", path, status);
        data.text.resize(std::max(length, data.text.size() * 2));
    }
}

std::string textOf(const Data& data) {
    if (data.type == REG_DWORD && data.text.size() * sizeof(wchar_t) == sizeof(DWORD)) {
        return std::to_string(static_cast<DWORD>(data.text[1]) << 16U | data.text[0]);
    }
    if (!isText(data.type)) return {};
    const auto end = std::find(data.text.begin(), data.text.end(), L'\0');
    return toUtf8({data.text.begin(), end});
}

}  // namespace

HKEY SystemRegistry::handleOf(RegistryRoot root) const {
    return root == RegistryRoot::LocalMachine ? localMachine_ : currentUser_;
}

bool SystemRegistry::keyExists(RegistryRoot root, std::string_view path) const {
    return openKey(handleOf(root), path, KEY_QUERY_VALUE).isOpen();
}

std::vector<std::string> SystemRegistry::subKeys(RegistryRoot root, std::string_view path) const {
    std::vector<std::string> names;
    const RegistryKey key = openKey(handleOf(root), path, KEY_ENUMERATE_SUB_KEYS);
    if (!key.isOpen()) return names;
    for (DWORD index = 0;; ++index) {
        std::array<wchar_t, longestKeyName> name{};
        auto length = static_cast<DWORD>(name.size());
        if (::RegEnumKeyExW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr,
                            nullptr) != ERROR_SUCCESS) {
            return names;
        }
        names.push_back(toUtf8({name.data(), length}));
    }
}

std::vector<std::string> SystemRegistry::valueNames(RegistryRoot root,
                                                    std::string_view path) const {
    std::vector<std::string> names;
    const RegistryKey key = openKey(handleOf(root), path, KEY_QUERY_VALUE);
    if (!key.isOpen()) return names;
    for (const std::wstring& name : namesOfValues(key)) {
        if (!name.empty()) names.push_back(toUtf8(name));
    }
    return names;
}

std::optional<std::string> SystemRegistry::read(RegistryRoot root, std::string_view path,
                                                std::string_view name) const {
    const RegistryKey key = openKey(handleOf(root), path, KEY_QUERY_VALUE);
    const std::wstring wide = toWide(name);
    if (!key.isOpen() || !hasValue(key, wide)) return std::nullopt;
    return textOf(readData(key, wide, path));
}

void SystemRegistry::createKey(RegistryRoot root, std::string_view path) {
    // Most users may look at the key that an administrator has made, but not create it.
    if (keyExists(root, path)) return;
    RegistryKey key;
    const LSTATUS status = key.create(handleOf(root), toWide(path), KEY_QUERY_VALUE);
    if (status != ERROR_SUCCESS) fail("create", path, status);
    changed_.emplace(root, path);
}

void SystemRegistry::set(RegistryRoot root, std::string_view path, std::string_view name,
                         DWORD type, std::string_view text) {
    const RegistryKey key = openKey(handleOf(root), path, KEY_SET_VALUE);
    if (!key.isOpen()) fail("change", path, ERROR_FILE_NOT_FOUND);
    const std::wstring wide = toWide(text);
    const DWORD number = leadingNumber(text);
    const bool isNumber = type == REG_DWORD;
    const void* data = isNumber ? static_cast<const void*>(&number) : wide.c_str();
    const std::size_t size = isNumber ? sizeof number : (wide.size() + 1) * sizeof(wchar_t);
    const LSTATUS status =
        ::RegSetValueExW(key.get(), toWide(name).c_str(), 0, type, static_cast<const BYTE*>(data),
                         static_cast<DWORD>(size));
    if (status != ERROR_SUCCESS) fail("change", path, status);
    changed_.emplace(root, path);
}

void SystemRegistry::setText(RegistryRoot root, std::string_view path, std::string_view name,
                             std::string_view text) {
    set(root, path, name, REG_SZ, text);
}

void SystemRegistry::setNumber(RegistryRoot root, std::string_view path, std::string_view name,
                               std::uint32_t number) {
    set(root, path, name, REG_DWORD, std::to_string(number));
}

bool SystemRegistry::setExisting(RegistryRoot root, std::string_view path, std::string_view name,
                                 std::string_view text) {
    const RegistryKey key = openKey(handleOf(root), path, KEY_QUERY_VALUE);
    const std::wstring wide = toWide(name);
    if (!key.isOpen() || !hasValue(key, wide)) return false;
    const Data before = readData(key, wide, path);
    if (!isText(before.type) && before.type != REG_DWORD) {
        throwSystemFault("set a value that is neither a text nor a number in the registry key",
                         path, ERROR_INVALID_DATATYPE);
    }
    // Users without the right to write are not stopped by what stays as it is.
    const std::string after =
        before.type == REG_DWORD ? std::to_string(leadingNumber(text)) : std::string(text);
    if (textOf(before) != after) set(root, path, name, before.type, text);
    return true;
}

void SystemRegistry::flush(Durability durability) {
    if (durability == Durability::Durable) {
        for (const auto& [root, path] : changed_) {
            const RegistryKey key = openKey(handleOf(root), path, KEY_QUERY_VALUE);
            if (key.isOpen()) ::RegFlushKey(key.get());
        }
    }
    changed_.clear();
}

}  // namespace tandril::platform
