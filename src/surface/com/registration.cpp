#include "surface/com/registration.h"

#include <objbase.h>

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
constexpr wchar_t classesKey[] = L"SOFTWARE\\Classes\\";
constexpr bool is64Bit = sizeof(void*) == 8;
constexpr REGSAM otherView = is64Bit ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

std::wstring textOf(const GUID& id) {
    std::array<wchar_t, 39> text{};
    ::StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

using Rows = std::vector<RegistryText>;

// A 32-bit Windows has one view alone, and would answer for the other with that.
bool hasOtherView() {
    BOOL isBelow64Bit = FALSE;
    return is64Bit || (::IsWow64Process(::GetCurrentProcess(), &isBelow64Bit) && isBelow64Bit);
}

// What the component writes into, with everybody else.
std::vector<std::wstring> foreignKeys() {
    return {L"SOFTWARE\\Classes", L"SOFTWARE\\Classes\\CLSID", L"SOFTWARE\\Classes\\Interface",
            L"SOFTWARE\\Classes\\TypeLib"};
}

std::wstring classKey() {
    return classesKey + (L"CLSID\\" + textOf(CLSID_Client20));
}

std::wstring typeLibraryKey() {
    return classesKey + (L"TypeLib\\" + textOf(LIBID_Tandril) + L"\\1.0");
}

// What each bitness has for itself.
Rows ownRows() {
    const std::wstring key = classKey();
    const std::wstring path = modulePath();
    return {
        {key, L"", classTitle},
        {key + L"\\InprocServer32", L"", path},
        {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {key + L"\\ProgID", L"", versionedProgramId},
        {key + L"\\VersionIndependentProgID", L"", programId},
        {key + L"\\TypeLib", L"", textOf(LIBID_Tandril)},
        {key + L"\\Version", L"", L"1.0"},
        {key + L"\\Programmable", L"", L""},
        {typeLibraryKey() + (is64Bit ? L"\\0\\win64" : L"\\0\\win32"), L"", path},
    };
}

// How the interface crosses apartments and processes: by its type library.
Rows interfaceRows(REGSAM view) {
    const std::wstring key = classesKey + (L"Interface\\" + textOf(IID__Client20));
    return {
        {key, L"", interfaceName, view},
        {key + L"\\ProxyStubClsid32", L"", automationProxy, view},
        {key + L"\\TypeLib", L"", textOf(LIBID_Tandril), view},
        {key + L"\\TypeLib", L"Version", L"1.0", view},
    };
}

// What both bitnesses write alike, and the last one removes.
Rows sharedRows() {
    const std::wstring name = std::wstring(classesKey) + programId;
    const std::wstring versioned = std::wstring(classesKey) + versionedProgramId;
    const std::wstring classId = textOf(CLSID_Client20);
    const std::wstring path = modulePath();
    Rows rows = {
        {name, L"", classTitle},
        {name + L"\\CLSID", L"", classId},
        {name + L"\\CurVer", L"", versionedProgramId},
        {versioned, L"", classTitle},
        {versioned + L"\\CLSID", L"", classId},
        {typeLibraryKey(), L"", typeLibraryTitle},
        {typeLibraryKey() + L"\\FLAGS", L"", L"0"},
        {typeLibraryKey() + L"\\HELPDIR", L"", path.substr(0, path.rfind(L'\\'))},
    };
    const auto add = [&rows](const Rows& more) {
        rows.insert(rows.end(), more.begin(), more.end());
    };
    add(interfaceRows(0));
    if (hasOtherView()) add(interfaceRows(otherView));
    return rows;
}

bool isOtherBitnessRegistered() {
    RegistryKey key;
    return hasOtherView() &&
           key.open(HKEY_LOCAL_MACHINE, classKey(), KEY_QUERY_VALUE | otherView) == ERROR_SUCCESS;
}

}  // namespace

// The type library is registered row by row like the rest, since RegisterTypeLib() leaves behind
// what it wrote before it failed.
HRESULT registerServer() noexcept {
    return guarded([] {
        RegistryChanges changes(HKEY_LOCAL_MACHINE, foreignKeys());
        for (const Rows& rows : {ownRows(), sharedRows()}) {
            for (const RegistryText& row : rows) changes.set(row);
        }
        changes.keep();
        return S_OK;
    });
}

HRESULT unregisterServer() noexcept {
    return guarded([] {
        RegistryChanges changes(HKEY_LOCAL_MACHINE, foreignKeys());
        for (const RegistryText& row : ownRows()) changes.remove(row);
        if (!isOtherBitnessRegistered()) {
            for (const RegistryText& row : sharedRows()) changes.remove(row);
        }
        changes.keep();
        return S_OK;
    });
}

}  // namespace tandril::com
