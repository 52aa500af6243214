// A program whose threads share everything: COM makes the object on a thread of its own, and each
// call goes there by the proxy that the registered type library describes.
#include <gmock/gmock.h>
#include <objidl.h>

#include <filesystem>
#include <thread>

#include "surface/com/dll.h"

namespace tandril::test {
namespace {

using Microsoft::WRL::ComPtr;

class Apartments : public testing::Test {
  protected:
    void SetUp() override {
        if (!isMachineOfTests()) GTEST_SKIP() << "the registry is somebody's";
        clearMachine();
        std::filesystem::create_directories(L"C:\\Vorn Tandril");
        std::filesystem::copy_file(TANDRIL_SAMPLES "/fieldmapper-en.xml",
                                   "C:\\Vorn Tandril\\FieldMapper.xml");
        ASSERT_EQ(dll_.registerServer(), S_OK);
    }
    ~Apartments() override {
        if (!isMachineOfTests()) return;
        dll_.unregisterServer();
        clearMachine();
    }

    Dll dll_;
};

// A text of the caller's, freed when destroyed.
struct Text {
    explicit Text(const wchar_t* text) : raw(::SysAllocString(text)) {}
    ~Text() { ::SysFreeString(raw); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    std::wstring value() const { return {raw, ::SysStringLen(raw)}; }
    BSTR raw;
};

// What the interface has: texts, numbers and variants, in both directions.
void callThrough(::_Client20& client) {
    VARIANT result;
    ::VariantInit(&result);
    EXPECT_EQ(client.Initialize(&result), S_OK);
    EXPECT_EQ(result.vt, VT_BSTR);
    ::VariantClear(&result);
    VARIANT_BOOL exists = VARIANT_FALSE;
    EXPECT_EQ(client.LocalXmlExists(&exists), S_OK);
    EXPECT_EQ(exists, VARIANT_TRUE);
    Text mode(L"Größer \x2014 offline"), name(L"Mode"), read(L"");
    EXPECT_EQ(client.Set_Mode(mode.raw, &result), S_OK);
    EXPECT_EQ(client.GetVariable(name.raw, &read.raw), S_OK);
    EXPECT_EQ(read.value(), mode.value());
    short columns = 0;
    Text section(L"ccsocservclabr"), headings(L"");
    EXPECT_EQ(client.getColumnHeadingsForHRA(&columns, section.raw, &headings.raw), S_OK);
    EXPECT_GT(columns, 1);
    EXPECT_THAT(headings.value(), testing::StartsWith(L"<COL"));
    Text file(L"none");
    EXPECT_EQ(client.SetCurrentmdb(&file.raw, &result), S_OK);
    EXPECT_EQ(file.value(), L"none");
    VARIANT order, nothing;
    ::VariantInit(&nothing);
    order.vt = VT_I4;
    order.lVal = 100201;
    EXPECT_EQ(client.deleteNode(order, nothing, nothing, nothing, &result), S_OK);
    EXPECT_EQ(result.vt, VT_EMPTY);
    std::filesystem::remove(L"C:\\Vorn Tandril\\log.txt");
    EXPECT_EQ(client.DownloadXml(section.raw, &read.raw), E_FAIL);
}

TEST_F(Apartments, AProgramOfManyThreadsCallsThroughAProxy) {
    std::thread([] {
        ASSERT_EQ(::CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        {
            ComPtr<::_Client20> client;
            EXPECT_EQ(
                ::CoCreateInstance(CLSID_Client20, nullptr, CLSCTX_INPROC_SERVER, IID__Client20,
                                   reinterpret_cast<void**>(client.GetAddressOf())),
                S_OK);
            ComPtr<IMultiQI> proxy;
            EXPECT_EQ(client.As(&proxy), S_OK);
            if (client) callThrough(*client.Get());
        }
        ::CoUninitialize();
    }).join();
}

}  // namespace
}  // namespace tandril::test
