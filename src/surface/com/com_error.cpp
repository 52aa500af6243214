#include "surface/com/com_error.h"

#include <wrl/client.h>

#include "client20_interface.h"
#include "platform/windows/wide.h"
#include "surface/com/names.h"

namespace tandril::com {

using Microsoft::WRL::ComPtr;

HRESULT reportFault(const char* text) noexcept {
    ComPtr<ICreateErrorInfo> creation;
    ComPtr<IErrorInfo> information;
    if (FAILED(::CreateErrorInfo(&creation)) || FAILED(creation.As(&information))) return E_FAIL;
    try {
        std::wstring description = platform::toWide(text);
        std::wstring source = programId;
        creation->SetGUID(IID__Client20);
        creation->SetSource(source.data());
        creation->SetDescription(description.data());
        ::SetErrorInfo(0, information.Get());
    } catch (const std::exception&) {
        // The failure itself still arrives, without its text.
    }
    return E_FAIL;
}

}  // namespace tandril::com
