#pragma once

#include <windows.h>
// Needs the types of windows.h.
#include <oleauto.h>
#include <wrl/client.h>

#include <string>

namespace tandril::com {

// The path of this DLL. Throws ComError.
std::wstring modulePath();

// The type library that lies in this DLL. Throws ComError.
Microsoft::WRL::ComPtr<ITypeLib> loadTypeLibrary();

// What the library says of the interface and of the class.
struct TypeInformation {
    Microsoft::WRL::ComPtr<ITypeInfo> ofInterface;
    Microsoft::WRL::ComPtr<ITypeInfo> ofClass;
};
TypeInformation loadTypeInformation();

}  // namespace tandril::com
