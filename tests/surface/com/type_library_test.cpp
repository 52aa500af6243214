// The type library in the DLL says what the method table says.
#include <gmock/gmock.h>

#include <string>

#include "component/methods.h"
#include "platform/windows/wide.h"
#include "support/read_file.h"
#include "surface/com/dll.h"

namespace tandril::test {
namespace {

using Microsoft::WRL::ComPtr;

constexpr int slotsBefore = 7;  // those of IDispatch

std::string textOf(BSTR text) {
    const std::string utf8 = platform::toUtf8({text, ::SysStringLen(text)});
    ::SysFreeString(text);
    return utf8;
}

// The words of the published table for a type; "?" for one that it does not know.
std::string kindOf(const TYPEDESC& type) {
    switch (type.vt) {
        case VT_BSTR:
            return "string";
        case VT_VARIANT:
            return "variant";
        case VT_BOOL:
            return "boolean";
        case VT_I2:
            return "16-bit integer";
        default:
            return "?";
    }
}

constexpr USHORT inFlag = PARAMFLAG_FIN;
constexpr USHORT inOutFlags = PARAMFLAG_FIN | PARAMFLAG_FOUT;
constexpr USHORT resultFlags = PARAMFLAG_FOUT | PARAMFLAG_FRETVAL;

std::string parameter(const std::string& name, const ELEMDESC& description) {
    const bool isPointer = description.tdesc.vt == VT_PTR;
    const USHORT flags = description.paramdesc.wParamFlags;
    if (flags == inFlag && !isPointer) return name + ": " + kindOf(description.tdesc);
    if (flags == inOutFlags && isPointer) {
        return name + ": " + kindOf(*description.tdesc.lptdesc) + " by reference";
    }
    return "?" + name;
}

class TypeLibraryTest : public testing::Test {
  protected:
    TypeLibraryTest() {
        if (FAILED(::LoadTypeLibEx(Dll::path().c_str(), REGKIND_NONE, &library_))) {
            throw std::runtime_error("the DLL has no type library");
        }
    }

    // "name: description" of the library or of a type.
    template <class Described>
    static std::string documentation(Described& described) {
        BSTR name = nullptr, description = nullptr;
        EXPECT_EQ(described.GetDocumentation(-1, &name, &description, nullptr, nullptr), S_OK);
        const std::string named = textOf(name);
        return named + ": " + textOf(description);
    }
    ComPtr<ITypeInfo> typeOf(const GUID& id) const {
        ComPtr<ITypeInfo> info;
        EXPECT_EQ(library_->GetTypeInfoOfGuid(id, &info), S_OK);
        return info;
    }
    // The interface as a vtable sees it; by itself a dual one shows as a script sees it.
    ComPtr<ITypeInfo> interfaceType() const {
        const ComPtr<ITypeInfo> dispatch = typeOf(IID__Client20);
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> info;
        constexpr UINT otherHalf = static_cast<UINT>(-1);
        EXPECT_EQ(dispatch->GetRefTypeOfImplType(otherHalf, &reference), S_OK);
        EXPECT_EQ(dispatch->GetRefTypeInfo(reference, &info), S_OK);
        return info;
    }
    // "9 GetDetails(iObject: string, ...) -> string", from what the library knows.
    static std::string describe(ITypeInfo& info, const FUNCDESC& function) {
        BSTR names[16] = {};
        UINT count = 0;
        EXPECT_EQ(info.GetNames(function.memid, names, std::size(names), &count), S_OK);
        std::string text = std::to_string(function.memid) + ' ' + textOf(names[0]) + '(';
        const int last = function.cParams - 1;
        for (int i = 0; i < last; ++i) {
            text += (i == 0 ? "" : ", ") +
                    parameter(textOf(names[i + 1]), function.lprgelemdescParam[i]);
        }
        for (UINT i = static_cast<UINT>(last) + 1; i < count; ++i) ::SysFreeString(names[i]);
        const ELEMDESC& result = function.lprgelemdescParam[last];
        if (result.paramdesc.wParamFlags != resultFlags || result.tdesc.vt != VT_PTR)
            return "?" + text;
        return text + ") -> " + kindOf(*result.tdesc.lptdesc) + '\n';
    }

    ComPtr<ITypeLib> library_;
};

TEST_F(TypeLibraryTest, SaysWhatTheMethodTableSays) {
    const ComPtr<ITypeInfo> info = interfaceType();
    std::string table;
    for (UINT i = 0; i < methods().size(); ++i) {
        FUNCDESC* function = nullptr;
        ASSERT_EQ(info->GetFuncDesc(i, &function), S_OK);
        table += describe(*info.Get(), *function);
        EXPECT_EQ(static_cast<std::size_t>(function->oVft) / sizeof(void*), slotsBefore + i);
        EXPECT_EQ(function->invkind, INVOKE_FUNC);
        EXPECT_EQ(function->elemdescFunc.tdesc.vt, VT_HRESULT);
        info->ReleaseFuncDesc(function);
    }
    EXPECT_EQ(table, readFile(TANDRIL_SURFACE_TESTS "/methods.txt"));
}

TEST_F(TypeLibraryTest, TheInterfaceIsDualHiddenAndNotExtensible) {
    const ComPtr<ITypeInfo> dispatch = typeOf(IID__Client20);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(dispatch->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
    constexpr WORD expectedFlags = TYPEFLAG_FDUAL | TYPEFLAG_FHIDDEN | TYPEFLAG_FNONEXTENSIBLE;
    EXPECT_EQ(attributes->wTypeFlags & expectedFlags, expectedFlags);
    dispatch->ReleaseTypeAttr(attributes);

    const ComPtr<ITypeInfo> early = interfaceType();
    ASSERT_EQ(early->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_INTERFACE);
    // Of the two halves only this one can tell.
    constexpr WORD earlyFlags = expectedFlags | TYPEFLAG_FOLEAUTOMATION;
    EXPECT_EQ(attributes->wTypeFlags & earlyFlags, earlyFlags);
    EXPECT_EQ(attributes->cFuncs, methods().size());
    EXPECT_EQ(attributes->cbSizeVft / sizeof(void*), slotsBefore + methods().size());
    early->ReleaseTypeAttr(attributes);
}

TEST_F(TypeLibraryTest, TheClassHasTheInterfaceAsItsDefault) {
    const ComPtr<ITypeInfo> classInfo = typeOf(CLSID_Client20);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(classInfo->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_EQ(attributes->cImplTypes, 1);
    EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FCANCREATE, 0);
    classInfo->ReleaseTypeAttr(attributes);
    int flags = 0;
    ASSERT_EQ(classInfo->GetImplTypeFlags(0, &flags), S_OK);
    EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT);
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> ofDefault;
    ASSERT_EQ(classInfo->GetRefTypeOfImplType(0, &reference), S_OK);
    ASSERT_EQ(classInfo->GetRefTypeInfo(reference, &ofDefault), S_OK);
    ASSERT_EQ(ofDefault->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(attributes->guid == IID__Client20);
    ofDefault->ReleaseTypeAttr(attributes);
}

TEST_F(TypeLibraryTest, HoldsTheInterfaceAndTheClassAlone) {
    EXPECT_EQ(library_->GetTypeInfoCount(), 2U);
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library_->GetLibAttr(&attributes), S_OK);
    EXPECT_TRUE(attributes->guid == LIBID_Tandril);
    EXPECT_EQ(attributes->wMajorVerNum, 1);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    EXPECT_EQ(attributes->syskind, SYS_WIN64);
    library_->ReleaseTLibAttr(attributes);
}

TEST_F(TypeLibraryTest, NamesAndDescribesWhatItHolds) {
    EXPECT_EQ(documentation(*library_.Get()), "Tandril: Tandril");
    EXPECT_EQ(documentation(*typeOf(CLSID_Client20).Get()), "Client20: Field-service client");
    EXPECT_EQ(documentation(*typeOf(IID__Client20).Get()), "_Client20: ");
}

}  // namespace
}  // namespace tandril::test
