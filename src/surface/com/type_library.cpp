#include "surface/com/type_library.h"

#include "client20_interface.h"
#include "surface/com/com_error.h"

namespace tandril::com {

using Microsoft::WRL::ComPtr;

std::wstring modulePath() {
    HMODULE module = nullptr;
    // Any address within the DLL names it.
    static const char here = 0;
    ::GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&here), &module);
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            ::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) throw ComError{HRESULT_FROM_WIN32(::GetLastError())};
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

ComPtr<ITypeLib> loadTypeLibrary() {
    ComPtr<ITypeLib> library;
    requireSuccess(::LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &library));
    return library;
}

TypeInformation loadTypeInformation() {
    const ComPtr<ITypeLib> library = loadTypeLibrary();
    TypeInformation types;
    requireSuccess(library->GetTypeInfoOfGuid(IID__Client20, &types.ofInterface));
    requireSuccess(library->GetTypeInfoOfGuid(CLSID_Client20, &types.ofClass));
    return types;
}

}  // namespace tandril::com
