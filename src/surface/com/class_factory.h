#pragma once

#include <windows.h>

namespace tandril::com {

// Makes the class factory of Client20 and hands out that interface of it.
HRESULT createClassFactory(REFIID iid, void** object) noexcept;

}  // namespace tandril::com
