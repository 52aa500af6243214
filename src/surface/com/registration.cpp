#include "surface/com/registration.h"

#include <objbase.h>
#include <oleauto.h>

#include <array>
#include <string>
#include <vector>

#include "client20_interface.h"
#include "platform/windows/registry_key.h"
#include "surface/com/com_error.h"
#include "surface/com/names.h"
#include "surface/com/registry_changes.h"
#include "surface/com/type_library.h"

namespace tandril::com {
namespace {

using platform::RegistryKey;

// The classes of the machine, not those that a user may have laid over them.
constexpr wchar_t kClasses[] = L"SOFTWARE\\Classes\\";
constexpr bool kIs64Bit = sizeof(void*) == 8;
constexpr REGSAM kOtherView = kIs64Bit ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

std::wstring textOf(const GUID& id) {
    std::array<wchar_t, 39> text{};
    ::StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

struct Row {
    std::wstring key;
    std::wstring value;
    std::wstring text;
};

std::wstring classKey() {
    return kClasses + (L"CLSID\\" + textOf(CLSID_Client20));
}

// What the class is found by. Each bitness has rows of its own.
std::vector<Row> classRows() {
    const std::wstring key = classKey();
    return {
        {key, L"", kClassTitle},
        {key + L"\\InprocServer32", L"", modulePath()},
        {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {key + L"\\ProgID", L"", kVersionedProgramId},
        {key + L"\\VersionIndependentProgID", L"", kProgramId},
        {key + L"\\TypeLib", L"", textOf(LIBID_Tandril)},
        {key + L"\\Version", L"", L"1.0"},
        {key + L"\\Programmable", L"", L""},
    };
}

// The names of the class, which both bitnesses share.
std::vector<Row> nameRows() {
    const std::wstring name = std::wstring(kClasses) + kProgramId;
    const std::wstring versioned = std::wstring(kClasses) + kVersionedProgramId;
    const std::wstring classId = textOf(CLSID_Client20);
    return {
        {name, L"", kClassTitle},
        {name + L"\\CLSID", L"", classId},
        {name + L"\\CurVer", L"", kVersionedProgramId},
        {versioned, L"", kClassTitle},
        {versioned + L"\\CLSID", L"", classId},
    };
}

bool exists(const std::wstring& path, REGSAM view = 0) {
    RegistryKey key;
    return key.open(HKEY_LOCAL_MACHINE, path, KEY_QUERY_VALUE | view) == ERROR_SUCCESS;
}

std::wstring typeLibraryKey() {
    return kClasses + (L"TypeLib\\" + textOf(LIBID_Tandril) + L"\\1.0\\0\\") +
           (kIs64Bit ? L"win64" : L"win32");
}

HRESULT unregisterTypeLibrary() {
    return ::UnRegisterTypeLib(LIBID_Tandril, 1, 0, LOCALE_NEUTRAL,
                               kIs64Bit ? SYS_WIN64 : SYS_WIN32);
}

void registerTypeLibrary() {
    const auto library = loadTypeLibrary();
    std::wstring path = modulePath();
    const bool wasRegistered = exists(typeLibraryKey());
    const HRESULT result = ::RegisterTypeLib(library.Get(), path.data(), nullptr);
    if (FAILED(result) && !wasRegistered) unregisterTypeLibrary();
    requireSuccess(result);
}

// Throws ComError unless this process may delete what is there of the rows.
void requireRights(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        RegistryKey key;
        const LSTATUS status =
            key.open(HKEY_LOCAL_MACHINE, row.key, KEY_QUERY_VALUE | KEY_SET_VALUE | DELETE);
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
            throw ComError{HRESULT_FROM_WIN32(status)};
        }
    }
}

bool isEmpty(const std::wstring& path) {
    RegistryKey key;
    DWORD keys = 0;
    DWORD values = 0;
    return key.open(HKEY_LOCAL_MACHINE, path, KEY_QUERY_VALUE) == ERROR_SUCCESS &&
           ::RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                              &values, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS &&
           keys == 0 && values == 0;
}

// Deletes the values, and the keys that have nothing else in them.
void remove(const std::vector<Row>& rows) {
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        ::RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, row->key.c_str(), row->value.c_str());
        if (isEmpty(row->key)) ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, row->key.c_str());
    }
}

}  // namespace

HRESULT registerServer() noexcept {
    return guarded([] {
        RegistryChanges changes(HKEY_LOCAL_MACHINE);
        for (const auto& rows : {classRows(), nameRows()}) {
            for (const Row& row : rows) changes.setText(row.key, row.value, row.text);
        }
        registerTypeLibrary();
        changes.keep();
        return S_OK;
    });
}

HRESULT unregisterServer() noexcept {
    return guarded([] {
        const std::vector<Row> ofClass = classRows();
        const std::vector<Row> names = nameRows();
        requireRights(ofClass);
        requireRights(names);
        if (exists(typeLibraryKey())) requireSuccess(unregisterTypeLibrary());
        remove(ofClass);
        // They still lead to the class of the other bitness, where that is registered.
        if (!exists(classKey(), kOtherView)) remove(names);
        return S_OK;
    });
}

}  // namespace tandril::com
