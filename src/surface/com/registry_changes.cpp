#include "surface/com/registry_changes.h"

#include <algorithm>
#include <utility>

#include "platform/windows/registry_key.h"
#include "surface/com/com_error.h"

namespace tandril::com {

using platform::RegistryKey;

namespace {

void requireChange(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw ComError{HRESULT_FROM_WIN32(status)};
}

bool isMissing(LSTATUS status) {
    return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
}

LSTATUS query(HKEY key, const std::wstring& name, DWORD& type, std::vector<BYTE>& bytes) {
    DWORD size = 0;
    LSTATUS status = ::RegQueryValueExW(key, name.c_str(), nullptr, &type, nullptr, &size);
    if (status != ERROR_SUCCESS) return status;
    bytes.resize(size);
    status = ::RegQueryValueExW(key, name.c_str(), nullptr, &type, bytes.data(), &size);
    bytes.resize(size);
    return status;
}

}  // namespace

RegistryChanges::~RegistryChanges() {
    std::for_each(steps_.rbegin(), steps_.rend(), [this](const Step& step) { takeBack(step); });
}

template <class Action>
void RegistryChanges::make(Step step, const Action& action) {
    steps_.push_back(std::move(step));
    const LSTATUS status = action();
    if (status != ERROR_SUCCESS) steps_.pop_back();
    requireChange(status);
}

void RegistryChanges::set(const RegistryText& row) {
    // Windows makes missing parents without telling which.
    for (std::size_t end = row.path.find(L'\\'); end != std::wstring::npos;
         end = row.path.find(L'\\', end + 1)) {
        createKey(row.path.substr(0, end), row.view);
    }
    createKey(row.path, row.view);
    RegistryKey key;
    requireChange(key.open(root_, row.path, KEY_QUERY_VALUE | KEY_SET_VALUE | row.view));
    Step step{Change::value, row.view, row.path, row.name, Data{}};
    const LSTATUS found = query(key.get(), row.name, step.before->type, step.before->bytes);
    if (isMissing(found)) {
        step.before.reset();
    } else {
        requireChange(found);
    }
    const auto size = static_cast<DWORD>((row.text.size() + 1) * sizeof(wchar_t));
    make(std::move(step), [&] {
        return ::RegSetValueExW(key.get(), row.name.c_str(), 0, REG_SZ,
                                reinterpret_cast<const BYTE*>(row.text.c_str()), size);
    });
}

void RegistryChanges::remove(const RegistryText& row) {
    RegistryKey key;
    const LSTATUS opened =
        key.open(root_, row.path, KEY_QUERY_VALUE | KEY_SET_VALUE | DELETE | row.view);
    if (isMissing(opened)) return;
    requireChange(opened);
    Step step{Change::value, row.view, row.path, row.name, Data{}};
    const LSTATUS found = query(key.get(), row.name, step.before->type, step.before->bytes);
    if (!isMissing(found)) {
        requireChange(found);
        make(std::move(step), [&] { return ::RegDeleteValueW(key.get(), row.name.c_str()); });
    }
    std::wstring path = row.path;
    while (deleteIfEmpty(path, row.view)) {
        const std::size_t parent = path.rfind(L'\\');
        if (parent == std::wstring::npos) break;
        path.resize(parent);
    }
}

void RegistryChanges::createKey(const std::wstring& path, REGSAM view) {
    RegistryKey key;
    // One that is there needs no right to create it.
    if (key.open(root_, path, KEY_QUERY_VALUE | view) == ERROR_SUCCESS) return;
    bool isNew = false;
    make({Change::keyMade, view, path, {}, {}},
         [&] { return key.create(root_, path, KEY_QUERY_VALUE | view, &isNew); });
    if (!isNew) steps_.pop_back();
}

bool RegistryChanges::deleteIfEmpty(const std::wstring& path, REGSAM view) {
    if (std::find(foreignKeys_.begin(), foreignKeys_.end(), path) != foreignKeys_.end())
        return false;
    RegistryKey key;
    DWORD keys = 0;
    DWORD values = 0;
    if (key.open(root_, path, KEY_QUERY_VALUE | view) != ERROR_SUCCESS ||
        ::RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                           nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS ||
        keys != 0 || values != 0) {
        return false;
    }
    make({Change::keyDeleted, view, path, {}, {}},
         [&] { return ::RegDeleteKeyExW(root_, path.c_str(), view, 0); });
    return true;
}

void RegistryChanges::takeBack(const Step& step) const {
    if (step.change == Change::keyMade) {
        ::RegDeleteKeyExW(root_, step.path.c_str(), step.view, 0);
        return;
    }
    RegistryKey key;
    if (step.change == Change::keyDeleted) {
        key.create(root_, step.path, KEY_QUERY_VALUE | step.view);
        return;
    }
    if (key.open(root_, step.path, KEY_SET_VALUE | step.view) != ERROR_SUCCESS) return;
    if (step.before) {
        ::RegSetValueExW(key.get(), step.name.c_str(), 0, step.before->type,
                         step.before->bytes.data(), static_cast<DWORD>(step.before->bytes.size()));
    } else {
        ::RegDeleteValueW(key.get(), step.name.c_str());
    }
}

}  // namespace tandril::com
