#include "surface/com/com_client.h"

#include <windows.h>
// Needs the types of windows.h.
#include <ocidl.h>

#include <array>
#include <atomic>

#include "client20_interface.h"
#include "component/client20.h"
#include "component/methods.h"
#include "surface/com/com_error.h"
#include "surface/com/script_arguments.h"
#include "surface/com/server.h"
#include "surface/com/type_library.h"
#include "surface/com/values.h"

namespace tandril::com {
namespace {

class ComClient final : public ::_Client20, public ISupportErrorInfo, public IProvideClassInfo {
  public:
    ComClient() = default;
    ComClient(const ComClient&) = delete;
    ComClient& operator=(const ComClient&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                        VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override;

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override;
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;

    STDMETHODIMP Initialize(VARIANT* result) override { return call(1, result); }
    STDMETHODIMP SaveWebPage(BSTR iHtml, VARIANT* result) override {
        return call(2, result, iHtml);
    }
    STDMETHODIMP MyActivities(BSTR iXML, BSTR* result) override { return call(3, result, iXML); }
    STDMETHODIMP completedAgenda(BSTR* result) override { return call(4, result); }
    STDMETHODIMP canceledAgenda(BSTR* result) override { return call(5, result); }
    STDMETHODIMP DownloadXml(BSTR iXML, BSTR* result) override { return call(6, result, iXML); }
    STDMETHODIMP updatexml(BSTR iXML, BSTR* result) override { return call(7, result, iXML); }
    STDMETHODIMP AddXml(BSTR iXML, BSTR* result) override { return call(8, result, iXML); }
    STDMETHODIMP GetDetails(BSTR iObject, BSTR iOrno, BSTR iAcln, BSTR iLine, BSTR iXML,
                            short iError, BSTR* result) override {
        return call(9, result, iObject, iOrno, iAcln, iLine, iXML, iError);
    }
    STDMETHODIMP CreateForm(BSTR iObject, BSTR iOrno, BSTR iAcln, BSTR* result) override {
        return call(10, result, iObject, iOrno, iAcln);
    }
    STDMETHODIMP CreateXMLStringForUpdate(BSTR* result) override { return call(11, result); }
    STDMETHODIMP DownloadErrors(BSTR iXML, BSTR* result) override { return call(12, result, iXML); }
    STDMETHODIMP ShowErrorPool(BSTR* result) override { return call(13, result); }
    STDMETHODIMP ShowErrorList(BSTR* result) override { return call(14, result); }
    STDMETHODIMP ListCostLines(BSTR iCostType, BSTR iorder, BSTR iActivity, BSTR* result) override {
        return call(15, result, iCostType, iorder, iActivity);
    }
    STDMETHODIMP deleteNode(VARIANT iorder, VARIANT iActivity, VARIANT iLine, VARIANT iCostType,
                            VARIANT* result) override {
        return call(16, result, iorder, iActivity, iLine, iCostType);
    }
    STDMETHODIMP ListOrders(BSTR* result) override { return call(17, result); }
    STDMETHODIMP Get_Error(BSTR* result) override { return call(18, result); }
    STDMETHODIMP SetCurrentmdb(BSTR* iFName, VARIANT* result) override {
        return call(19, result, iFName);
    }
    STDMETHODIMP GetVariable(BSTR iVar, BSTR* result) override { return call(20, result, iVar); }
    STDMETHODIMP SetODBCDataBase(BSTR* iName, VARIANT* result) override {
        return call(21, result, iName);
    }
    STDMETHODIMP RegisterDownloadPath(VARIANT* result) override { return call(22, result); }
    STDMETHODIMP LocalXmlExists(VARIANT_BOOL* result) override { return call(23, result); }
    STDMETHODIMP FMapperXMLExists(VARIANT_BOOL* result) override { return call(24, result); }
    STDMETHODIMP getFMapper(BSTR iXML, BSTR iOverwrite, VARIANT* result) override {
        return call(25, result, iXML, iOverwrite);
    }
    STDMETHODIMP Set_Mode(BSTR iMode, VARIANT* result) override { return call(26, result, iMode); }
    STDMETHODIMP HyperLinkAndZoom(short iMode, BSTR iXmlTag, BSTR iValue, BSTR iFormName,
                                  BSTR* result) override {
        return call(27, result, iMode, iXmlTag, iValue, iFormName);
    }
    STDMETHODIMP OpenDataBase(VARIANT* result) override { return call(28, result); }
    STDMETHODIMP CloseDataBase(VARIANT* result) override { return call(29, result); }
    STDMETHODIMP MasterData(BSTR iCode, BSTR* result) override { return call(30, result, iCode); }
    STDMETHODIMP ExplodeZip(BSTR iFileName, VARIANT* result) override {
        return call(31, result, iFileName);
    }
    STDMETHODIMP CreateMaterialForm(BSTR* result) override { return call(32, result); }
    STDMETHODIMP BuildCostLines(BSTR icType, BSTR iOrno, BSTR iAcln, BSTR* result) override {
        return call(33, result, icType, iOrno, iAcln);
    }
    STDMETHODIMP CostLinesHeader(BSTR iOrno, BSTR iAcln, BSTR* result) override {
        return call(34, result, iOrno, iAcln);
    }
    STDMETHODIMP NewObject(BSTR iObject, BSTR iOrno, BSTR iAcln, BSTR* result) override {
        return call(35, result, iObject, iOrno, iAcln);
    }
    STDMETHODIMP CreateOrderDropDown(BSTR* result) override { return call(36, result); }
    STDMETHODIMP CreateActivityDropDown(BSTR iorder, BSTR* result) override {
        return call(37, result, iorder);
    }
    STDMETHODIMP SaveHra(BSTR iXML, BSTR* result) override { return call(38, result, iXML); }
    STDMETHODIMP StroreErrorOrders(VARIANT* result) override { return call(39, result); }
    STDMETHODIMP deleteCompletedOrders(BSTR iXML, VARIANT* result) override {
        return call(40, result, iXML);
    }
    STDMETHODIMP GetI18NString(BSTR label, BSTR* result) override {
        return call(41, result, label);
    }
    STDMETHODIMP Synchronize_MasterData(BSTR iXML, BSTR* result) override {
        return call(42, result, iXML);
    }
    STDMETHODIMP CreateFormforHra(BSTR iObject, BSTR iOrno, BSTR iAcln, BSTR* result) override {
        return call(43, result, iObject, iOrno, iAcln);
    }
    STDMETHODIMP ListHRALines(BSTR iCostType, BSTR iorder, BSTR iActivity, BSTR* result) override {
        return call(44, result, iCostType, iorder, iActivity);
    }
    STDMETHODIMP GetDetailsForHRA(BSTR iObject, BSTR iOrno, BSTR iAcln, BSTR iLine, BSTR iXML,
                                  short iError, BSTR* result) override {
        return call(45, result, iObject, iOrno, iAcln, iLine, iXML, iError);
    }
    STDMETHODIMP getColumnHeadingsForHRA(short* iCols, BSTR iBoiTag, BSTR* result) override {
        return call(46, result, iCols, iBoiTag);
    }
    STDMETHODIMP GetMailContent(BSTR iWhat, VARIANT* result) override {
        return call(47, result, iWhat);
    }
    STDMETHODIMP SetHomePage(VARIANT* result) override { return call(48, result); }
    STDMETHODIMP ViewOrders_W(BSTR* result) override { return call(49, result); }
    STDMETHODIMP ViewOrders_SI(BSTR* result) override { return call(50, result); }
    STDMETHODIMP ViewActivities_W(BSTR* result) override { return call(51, result); }
    STDMETHODIMP ViewActivities_SI(BSTR* result) override { return call(52, result); }
    STDMETHODIMP ViewCostLines_W(BSTR iCostType, BSTR* result) override {
        return call(53, result, iCostType);
    }
    STDMETHODIMP ViewCostLines_SI(BSTR iCostType, BSTR* result) override {
        return call(54, result, iCostType);
    }
    STDMETHODIMP ViewHra_W(BSTR* result) override { return call(55, result); }
    STDMETHODIMP ViewHra_SI(BSTR* result) override { return call(56, result); }
    STDMETHODIMP CompleteOrder(VARIANT* result) override { return call(57, result); }

  private:
    ~ComClient() = default;

    template <class Result, class... Arguments>
    HRESULT call(std::size_t slot, Result* result, Arguments... arguments) noexcept;

    const ServerUse use_;
    std::atomic<ULONG> references_ = 1;
    const TypeInformation types_ = loadTypeInformation();
    Client20 client_{Server::instance().module()};
};

// Only where a result goes must be given; every other argument may be missing, but not the place of
// one that is given by reference.
bool isNowhere(const BSTR* place) {
    return place == nullptr;
}
bool isNowhere(const short* place) {
    return place == nullptr;
}
bool isNowhere(BSTR) {
    return false;
}
bool isNowhere(short) {
    return false;
}
bool isNowhere(const VARIANT&) {
    return false;
}

template <class Result, class... Arguments>
HRESULT ComClient::call(std::size_t slot, Result* result, Arguments... arguments) noexcept {
    // Nobody is to take the words of an older fault for those of a failure that has none.
    ::SetErrorInfo(0, nullptr);
    if (result == nullptr || (isNowhere(arguments) || ...)) return E_POINTER;
    *result = Result{};
    // While a message box is open the caller may let the object go.
    const Microsoft::WRL::ComPtr<::_Client20> kept(this);
    return guarded([&] {
        std::array<Value, sizeof...(Arguments)> values{decode(arguments)...};
        const Value returned = Server::instance().call(methods()[slot - 1], client_, values);
        [[maybe_unused]] std::size_t index = 0;
        (update(values[index++], arguments), ...);
        encode(returned, result);
        return S_OK;
    });
}

STDMETHODIMP ComClient::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch || iid == IID__Client20) {
        *object = static_cast<::_Client20*>(this);
    } else if (iid == IID_ISupportErrorInfo) {
        *object = static_cast<ISupportErrorInfo*>(this);
    } else if (iid == IID_IProvideClassInfo) {
        *object = static_cast<IProvideClassInfo*>(this);
    } else {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) ComClient::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

STDMETHODIMP ComClient::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
}

STDMETHODIMP ComClient::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return index == 0 ? types_.ofInterface.CopyTo(info) : DISP_E_BADINDEX;
}

STDMETHODIMP ComClient::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || ids == nullptr) return E_POINTER;
    return ::DispGetIDsOfNames(types_.ofInterface.Get(), names, count, ids);
}

STDMETHODIMP ComClient::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* arguments,
                               VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) {
    if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (arguments == nullptr) return E_POINTER;
    constexpr WORD putting = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
    if ((flags & putting) != 0) return DISP_E_MEMBERNOTFOUND;
    // As below, by call().
    const Microsoft::WRL::ComPtr<IUnknown> kept(static_cast<::_Client20*>(this));
    return guarded([&] {
        ScriptArguments fitted(id, *arguments, wrongArgument);
        const HRESULT returned =
            types_.ofInterface->Invoke(static_cast<::_Client20*>(this), id, flags, fitted.get(),
                                       result, exception, wrongArgument);
        if (SUCCEEDED(returned)) fitted.writeBack();
        return returned;
    });
}

STDMETHODIMP ComClient::InterfaceSupportsErrorInfo(REFIID iid) {
    return iid == IID__Client20 ? S_OK : S_FALSE;
}

STDMETHODIMP ComClient::GetClassInfo(ITypeInfo** info) {
    if (info == nullptr) return E_POINTER;
    return types_.ofClass.CopyTo(info);
}

}  // namespace

HRESULT createComClient(REFIID iid, void** object) noexcept {
    return guarded([&] {
        auto* client = new ComClient;
        const HRESULT result = client->QueryInterface(iid, object);
        client->Release();
        return result;
    });
}

}  // namespace tandril::com
