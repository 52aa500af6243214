#pragma once

#include <windows.h>

namespace tandril::com {

// Makes the class and its type library known to the machine, for hosts of this DLL's bitness.
// Returns the result of the first step that failed, for instance for want of rights, and leaves
// everything as it was then.
HRESULT registerServer() noexcept;

// Takes exactly that back. A class that is not registered is no failure. Without the rights to all
// of it nothing is changed.
HRESULT unregisterServer() noexcept;

}  // namespace tandril::com
