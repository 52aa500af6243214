#include "surface/com/registry_changes.h"

#include <algorithm>

#include "platform/windows/registry_key.h"
#include "surface/com/com_error.h"

namespace tandril::com {

using platform::RegistryKey;

namespace {

void requireChange(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw ComError{HRESULT_FROM_WIN32(status)};
}

}  // namespace

RegistryChanges::~RegistryChanges() {
    std::for_each(steps_.rbegin(), steps_.rend(), [this](const Step& step) { takeBack(step); });
}

void RegistryChanges::setText(const std::wstring& path, const std::wstring& name,
                              const std::wstring& text) {
    // Windows makes missing parents without telling which.
    for (std::size_t end = path.find(L'\\'); end != std::wstring::npos;
         end = path.find(L'\\', end + 1)) {
        createKey(path.substr(0, end));
    }
    createKey(path);
    steps_.push_back({path, name, readValue(path, name)});
    const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    requireChange(::RegSetKeyValueW(root_, path.c_str(), name.c_str(), REG_SZ, text.c_str(), size));
}

void RegistryChanges::createKey(const std::wstring& path) {
    RegistryKey key;
    // One that is there needs no right to create it.
    if (key.open(root_, path, KEY_QUERY_VALUE) == ERROR_SUCCESS) return;
    bool isNew = false;
    requireChange(key.create(root_, path, KEY_QUERY_VALUE, &isNew));
    if (isNew) steps_.push_back({path, std::nullopt, std::nullopt});
}

std::optional<RegistryChanges::Data> RegistryChanges::readValue(const std::wstring& path,
                                                                const std::wstring& name) const {
    DWORD size = 0;
    constexpr DWORD kAnything = RRF_RT_ANY | RRF_NOEXPAND;
    if (::RegGetValueW(root_, path.c_str(), name.c_str(), kAnything, nullptr, nullptr, &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    Data data{REG_NONE, std::vector<BYTE>(size)};
    requireChange(::RegGetValueW(root_, path.c_str(), name.c_str(), kAnything, &data.type,
                                 data.bytes.data(), &size));
    data.bytes.resize(size);
    return data;
}

void RegistryChanges::takeBack(const Step& step) const {
    const wchar_t* path = step.path.c_str();
    if (!step.valueName) {
        ::RegDeleteKeyW(root_, path);
    } else if (step.before) {
        ::RegSetKeyValueW(root_, path, step.valueName->c_str(), step.before->type,
                          step.before->bytes.data(), static_cast<DWORD>(step.before->bytes.size()));
    } else {
        ::RegDeleteKeyValueW(root_, path, step.valueName->c_str());
    }
}

}  // namespace tandril::com
