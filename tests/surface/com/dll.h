#pragma once

#include <windows.h>
// Need the types of windows.h.
#include <ocidl.h>
#include <oleauto.h>
#include <sddl.h>
#include <unknwn.h>
#include <wrl/client.h>

#include <string>

#include "client20_interface.h"

namespace tandril::test {

// Client20.dll, which lies beside the test program; unloaded when destroyed.
class Dll {
  public:
    Dll();
    ~Dll() { ::FreeLibrary(module_); }
    Dll(const Dll&) = delete;
    Dll& operator=(const Dll&) = delete;

    static std::wstring path();

    HRESULT registerServer() const { return call<HRESULT()>("DllRegisterServer"); }
    HRESULT unregisterServer() const { return call<HRESULT()>("DllUnregisterServer"); }
    HRESULT canUnloadNow() const { return call<HRESULT()>("DllCanUnloadNow"); }
    HRESULT getClassObject(REFCLSID classId, REFIID iid, void** object) const;

    Microsoft::WRL::ComPtr<IClassFactory> factory() const;
    Microsoft::WRL::ComPtr<::_Client20> client() const;

  private:
    template <class Function, class... Arguments>
    HRESULT call(const char* name, Arguments... arguments) const {
        const auto address = reinterpret_cast<void*>(::GetProcAddress(module_, name));
        if (address == nullptr) return HRESULT_FROM_WIN32(::GetLastError());
        return reinterpret_cast<Function*>(address)(arguments...);
    }

    HMODULE module_;
};

// COM on this thread, as long as the object lives.
class Apartment {
  public:
    Apartment() { ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Apartment() { ::CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

// Whether the machine is the tests' own, whose drive C: and registry are theirs to change.
bool isMachineOfTests();

// Takes away what the component keeps on the machine: its folder and its settings.
void clearMachine();

}  // namespace tandril::test
