#include "surface/com/dll.h"

#include <filesystem>
#include <stdexcept>

namespace tandril::test {

using Microsoft::WRL::ComPtr;

Dll::Dll() : module_(::LoadLibraryW(path().c_str())) {
    if (module_ == nullptr) throw std::runtime_error("cannot load Client20.dll");
}

std::wstring Dll::path() {
    std::wstring program(MAX_PATH, L'\0');
    program.resize(::GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
    return std::filesystem::path(program).replace_filename(L"Client20.dll").wstring();
}

HRESULT Dll::getClassObject(REFCLSID classId, REFIID iid, void** object) const {
    return call<HRESULT STDAPICALLTYPE(const CLSID*, const IID*, void**)>("DllGetClassObject",
                                                                          &classId, &iid, object);
}

ComPtr<IClassFactory> Dll::factory() const {
    ComPtr<IClassFactory> factory;
    if (FAILED(getClassObject(CLSID_Client20, IID_PPV_ARGS(&factory)))) {
        throw std::runtime_error("there is no class factory");
    }
    return factory;
}

ComPtr<::_Client20> Dll::client() const {
    ComPtr<::_Client20> client;
    if (FAILED(factory()->CreateInstance(nullptr, IID__Client20,
                                         reinterpret_cast<void**>(client.GetAddressOf())))) {
        throw std::runtime_error("the class factory makes no object");
    }
    return client;
}

bool isMachineOfTests() {
    return ::GetEnvironmentVariableW(L"TANDRIL_HEADLESS", nullptr, 0) != 0;
}

void clearMachine() {
    std::filesystem::remove_all(L"C:\\Vorn Tandril");
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Vorn");
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data");
}

}  // namespace tandril::test
