// The four functions that COM and regsvr32 call; client20.def lists them.
#include <windows.h>
// Needs the types of windows.h.
#include <objbase.h>

#include "client20_interface.h"
#include "surface/com/class_factory.h"
#include "surface/com/registration.h"
#include "surface/com/server.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (classId != CLSID_Client20) return CLASS_E_CLASSNOTAVAILABLE;
    return tandril::com::createClassFactory(iid, object);
}

STDAPI DllCanUnloadNow() {
    return tandril::com::Server::instance().tryUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return tandril::com::registerServer();
}

STDAPI DllUnregisterServer() {
    return tandril::com::unregisterServer();
}
