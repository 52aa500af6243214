#pragma once

#include <windows.h>

namespace tandril::com {

// Makes a COM object that is a Client20 and hands out that interface of it: the dual interface
// _Client20, or what tells about it (IProvideClassInfo, ISupportErrorInfo). Names are found, and
// arguments fitted to their types, by the type library.
//
// A fault is E_FAIL with its text in the error information, which reaches a script as an exception
// with that text.
HRESULT createComClient(REFIID iid, void** object) noexcept;

}  // namespace tandril::com
