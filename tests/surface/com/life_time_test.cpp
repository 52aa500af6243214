// How long the DLL has to stay loaded, and what its objects can be asked for.
#include <gmock/gmock.h>

#include <array>
#include <future>
#include <optional>
#include <thread>

#include "support/test_machine.h"
#include "surface/com/dll.h"
#include "surface/com/server.h"

namespace tandril::test {
namespace {

using Microsoft::WRL::ComPtr;

struct LifeTime : testing::Test {
    Apartment apartment;
    Dll dll;
};

TEST_F(LifeTime, AnObjectKeepsTheDllLoaded) {
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
    ComPtr<::_Client20> first = dll.client();
    ComPtr<::_Client20> second = dll.client();
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    first.Reset();
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    second.Reset();
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

TEST_F(LifeTime, AClassFactoryKeepsTheDllLoaded) {
    ComPtr<IClassFactory> factory = dll.factory();
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    factory.Reset();
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

TEST_F(LifeTime, ALockKeepsTheDllLoaded) {
    dll.factory()->LockServer(TRUE);
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    dll.factory()->LockServer(FALSE);
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

// An argument of the caller's: whoever asks for its value lets the client go. The test owns it.
class LettingGo final : public IDispatch {
  public:
    LettingGo(const Dll& dll, ComPtr<::_Client20>& client) : dll_(dll), client_(client) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool isKnown = iid == IID_IUnknown || iid == IID_IDispatch;
        *object = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        client_.Reset();
        wasInUse = dll_.canUnloadNow() == S_FALSE;
        result->vt = VT_BSTR;
        result->bstrVal = ::SysAllocString(L"none");
        return S_OK;
    }

    std::optional<bool> wasInUse;

  private:
    const Dll& dll_;
    ComPtr<::_Client20>& client_;
};

TEST_F(LifeTime, AnObjectLivesToTheEndOfItsCall) {
    if (!isMachineOfTests()) GTEST_SKIP() << "drive C: is somebody's";
    clearMachine();
    for (const bool isByName : {false, true}) {
        ComPtr<::_Client20> client = dll.client();
        LettingGo order(dll, client);
        std::array<VARIANT, 4> arguments{};
        VARIANT& first = arguments[isByName ? 3 : 0];
        first.vt = VT_DISPATCH;
        first.pdispVal = &order;
        VARIANT result{};
        if (isByName) {
            DISPPARAMS given{arguments.data(), nullptr, 4, 0};
            client->Invoke(16, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &given, &result,
                           nullptr, nullptr);
        } else {
            client->deleteNode(first, arguments[1], arguments[2], arguments[3], &result);
        }
        EXPECT_EQ(order.wasInUse, true) << isByName;
        EXPECT_EQ(dll.canUnloadNow(), S_OK) << isByName;
        ::VariantClear(&result);
    }
    clearMachine();
}

// A call may last: one that has a message box open goes on until somebody answers.
TEST(ServerUses, NobodyWaitsForACallToLearnThatTheDllIsInUse) {
    static std::promise<void> begun, finished;
    const Method lasting{1, "Lasting", {}, Kind::Variant, [](Client20&, std::span<Value>) {
                             begun.set_value();
                             finished.get_future().wait();
                             return Value();
                         }};
    com::Server server;
    server.addUse();
    TestMachine machine;
    Module module(machine.machine());
    Client20 client(module);
    std::thread caller([&] { server.call(lasting, client, {}); });
    begun.get_future().wait();
    auto asked = std::async(std::launch::async, [&] { return server.tryUnload(); });
    EXPECT_EQ(asked.wait_for(std::chrono::seconds(60)), std::future_status::ready);
    finished.set_value();
    caller.join();
    EXPECT_FALSE(asked.get());
    server.removeUse();
    EXPECT_TRUE(server.tryUnload());
}

TEST_F(LifeTime, EveryInterfaceIsOfOneObject) {
    const ComPtr<::_Client20> client = dll.client();
    ComPtr<IUnknown> identity;
    ASSERT_EQ(client.As(&identity), S_OK);
    for (const IID& iid : {IID_IUnknown, IID_IDispatch, IID__Client20, IID_ISupportErrorInfo,
                           IID_IProvideClassInfo}) {
        ComPtr<IUnknown> part;
        ASSERT_EQ(client->QueryInterface(iid, reinterpret_cast<void**>(part.GetAddressOf())), S_OK);
        ComPtr<IUnknown> back;
        ASSERT_EQ(part.As(&back), S_OK);
        EXPECT_EQ(back, identity);
    }
    ComPtr<IUnknown> none;
    EXPECT_EQ(
        client->QueryInterface(IID_IClassFactory, reinterpret_cast<void**>(none.GetAddressOf())),
        E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
}

TEST_F(LifeTime, FaultsOfTheInterfaceHaveWords) {
    ComPtr<ISupportErrorInfo> support;
    ASSERT_EQ(dll.client().As(&support), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID__Client20), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IDispatch), S_FALSE);
}

TEST_F(LifeTime, TheObjectNamesItsClass) {
    ComPtr<IProvideClassInfo> provider;
    ASSERT_EQ(dll.client().As(&provider), S_OK);
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(provider->GetClassInfo(&info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_TRUE(attributes->guid == CLSID_Client20);
    info->ReleaseTypeAttr(attributes);
}

TEST_F(LifeTime, WhatIsNotOfferedIsRefused) {
    ComPtr<IUnknown> object;
    const auto place = reinterpret_cast<void**>(object.GetAddressOf());
    EXPECT_EQ(dll.getClassObject(IID_IUnknown, IID_IClassFactory, place),
              CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(dll.getClassObject(CLSID_Client20, IID_IDispatch, place), E_NOINTERFACE);
    const ComPtr<IClassFactory> factory = dll.factory();
    EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, place), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, place), E_NOINTERFACE);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(object, nullptr);
}

}  // namespace
}  // namespace tandril::test
