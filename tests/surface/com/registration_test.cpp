// Registration of the DLL: what COM finds then, and that it is done whole or not at all.
//
// Rights are taken from the keys that would be written, not from those above: Wine, unlike Windows,
// lets a key be created below one that may not be written.
#include <gmock/gmock.h>

#include <array>
#include <map>
#include <stdexcept>
#include <string>

#include "platform/windows/registry_key.h"
#include "surface/com/dll.h"

namespace tandril::test {
namespace {

using Microsoft::WRL::ComPtr;
using platform::RegistryKey;

constexpr HRESULT accessDenied = static_cast<HRESULT>(0x80070005);

// The keys that belong to the component, as they are called in the registry.
constexpr std::array ownKeys = {
    L"CLSID\\{607D3E22-789F-47EE-A97F-FB2318BDD1C6}",
    L"TypeLib\\{09B08D0D-8D4A-4E43-8969-5491B163513B}",
    L"Interface\\{8FF55D9B-7301-41A5-85EA-6E3463EB1EDD}",
    L"Tandril.Client20",
    L"Tandril.Client20.1",
};
constexpr std::array<REGSAM, 2> bothViews = {KEY_WOW64_64KEY, KEY_WOW64_32KEY};

struct Place {
    std::wstring path;
    REGSAM view;
    auto operator<=>(const Place&) const = default;
};

// Each key with its values, "name=text;" each.
using Content = std::map<Place, std::wstring>;

std::wstring valuesOf(HKEY key) {
    std::wstring values;
    std::array<wchar_t, 128> name;
    std::array<wchar_t, 512> text;
    for (DWORD i = 0;; ++i) {
        DWORD length = static_cast<DWORD>(name.size());
        text.fill(L'\0');
        DWORD size = sizeof text;
        if (::RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr,
                            reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS) {
            return values;
        }
        values += std::wstring(name.data(), length) + L'=' + text.data() + L';';
    }
}

void collect(const Place& place, Content& content) {
    RegistryKey key;
    if (key.open(HKEY_LOCAL_MACHINE, place.path, KEY_READ | place.view) != ERROR_SUCCESS) return;
    content[place] = valuesOf(key.get());
    std::array<wchar_t, 256> name;
    for (DWORD i = 0;; ++i) {
        DWORD length = static_cast<DWORD>(name.size());
        if (::RegEnumKeyExW(key.get(), i, name.data(), &length, nullptr, nullptr, nullptr,
                            nullptr) != ERROR_SUCCESS) {
            return;
        }
        collect({place.path + L'\\' + name.data(), place.view}, content);
    }
}

std::wstring classes(const wchar_t* key) {
    return std::wstring(L"SOFTWARE\\Classes\\") + key;
}

// Both views, as far as they differ.
Content registered() {
    Content content;
    for (const wchar_t* key : ownKeys) {
        for (const REGSAM view : bothViews) collect({classes(key), view}, content);
    }
    return content;
}

void deleteAll() {
    for (const REGSAM view : bothViews) {
        RegistryKey all;
        if (all.open(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Classes", KEY_ALL_ACCESS | view) != 0)
            continue;
        for (const wchar_t* key : ownKeys) {
            RegistryKey own;
            if (own.open(HKEY_LOCAL_MACHINE, classes(key), KEY_ALL_ACCESS | view) != 0) continue;
            ::RegDeleteTreeW(own.get(), nullptr);
            ::RegDeleteKeyExW(HKEY_LOCAL_MACHINE, classes(key).c_str(), view, 0);
        }
    }
}

// A key that nobody may write, as long as the object lives; created where it is missing.
class Protected {
  public:
    explicit Protected(const Place& place) {
        if (key_.create(HKEY_LOCAL_MACHINE, place.path, KEY_READ | WRITE_DAC | place.view) !=
            ERROR_SUCCESS) {
            throw std::runtime_error("cannot open the key");
        }
        // Everybody may read, and give the rights back.
        set(L"D:(A;;KRWD;;;WD)");
    }
    ~Protected() { set(L"D:(A;;KA;;;WD)"); }
    Protected(const Protected&) = delete;
    Protected& operator=(const Protected&) = delete;

  private:
    void set(const wchar_t* rights) const {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        ::ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor,
                                                               nullptr);
        ::RegSetKeySecurity(key_.get(), DACL_SECURITY_INFORMATION, descriptor);
        ::LocalFree(descriptor);
    }

    RegistryKey key_;
};

class RegistrationTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!isMachineOfTests()) GTEST_SKIP() << "the registry is somebody's";
        deleteAll();
        ASSERT_EQ(dll_.registerServer(), S_OK);
        all_ = registered();
    }
    ~RegistrationTest() override {
        if (isMachineOfTests()) deleteAll();
    }

    // Those of them that have values, and so are written.
    std::vector<Place> writtenKeys() const {
        std::vector<Place> keys;
        for (const auto& [place, values] : all_) {
            if (!values.empty()) keys.push_back(place);
        }
        return keys;
    }

    Apartment apartment_;
    Dll dll_;
    Content all_;
};

TEST_F(RegistrationTest, IsFoundByNameAndByTypeLibrary) {
    CLSID id;
    ASSERT_EQ(::CLSIDFromProgID(L"Tandril.Client20", &id), S_OK);
    EXPECT_TRUE(id == CLSID_Client20);
    ASSERT_EQ(::CLSIDFromProgID(L"Tandril.Client20.1", &id), S_OK);
    EXPECT_TRUE(id == CLSID_Client20);
    ComPtr<::_Client20> client;
    EXPECT_EQ(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID__Client20,
                                 reinterpret_cast<void**>(client.GetAddressOf())),
              S_OK);
    ComPtr<ITypeLib> library;
    EXPECT_EQ(::LoadRegTypeLib(LIBID_Tandril, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
}

TEST_F(RegistrationTest, TellsHowTheInterfaceCrossesApartments) {
    ComPtr<IPSFactoryBuffer> factory;
    CLSID proxy;
    ASSERT_EQ(::CoGetPSClsid(IID__Client20, &proxy), S_OK);
    LPOLESTR text = nullptr;
    ASSERT_EQ(::StringFromCLSID(proxy, &text), S_OK);
    EXPECT_STREQ(text, L"{00020424-0000-0000-C000-000000000046}");
    ::CoTaskMemFree(text);
}

TEST_F(RegistrationTest, OnceMoreChangesNothing) {
    EXPECT_EQ(dll_.registerServer(), S_OK);
    EXPECT_EQ(registered(), all_);
}

TEST_F(RegistrationTest, IsTakenBackWhole) {
    EXPECT_EQ(dll_.unregisterServer(), S_OK);
    EXPECT_EQ(registered(), Content());
    EXPECT_EQ(dll_.unregisterServer(), S_OK);
}

TEST_F(RegistrationTest, LeavesTheSharedKeysToTheOtherBitness) {
    // As the other DLL leaves them when it is registered.
    RegistryKey other;
    ASSERT_EQ(other.create(HKEY_LOCAL_MACHINE, classes(ownKeys[0]), KEY_READ | KEY_WOW64_32KEY), 0);
    EXPECT_EQ(dll_.unregisterServer(), S_OK);
    CLSID id;
    EXPECT_EQ(::CLSIDFromProgID(L"Tandril.Client20", &id), S_OK);
    const Content left = registered();
    EXPECT_FALSE(left.contains({classes(ownKeys[0]), KEY_WOW64_64KEY}));
    EXPECT_TRUE(left.contains({classes(ownKeys[2]), KEY_WOW64_64KEY}));
    EXPECT_TRUE(left.contains({classes(ownKeys[2]), KEY_WOW64_32KEY}));
}

TEST_F(RegistrationTest, WithoutRightsToOneKeyNothingIsRegistered) {
    for (const Place& key : writtenKeys()) {
        deleteAll();
        const Protected denied(key);
        const Content before = registered();
        EXPECT_EQ(dll_.registerServer(), accessDenied) << testing::PrintToString(key.path);
        EXPECT_EQ(registered(), before) << testing::PrintToString(key.path);
    }
}

TEST_F(RegistrationTest, WithoutRightsToOneKeyNothingIsUnregistered) {
    for (const Place& key : writtenKeys()) {
        const Protected denied(key);
        EXPECT_EQ(dll_.unregisterServer(), accessDenied) << testing::PrintToString(key.path);
        EXPECT_EQ(registered(), all_) << testing::PrintToString(key.path);
    }
    EXPECT_EQ(dll_.unregisterServer(), S_OK);
}

TEST_F(RegistrationTest, ARefusalLeavesAnotherInstallationAsItWas) {
    RegistryKey server;
    const std::wstring path = classes(ownKeys[0]) + L"\\InprocServer32";
    ASSERT_EQ(server.create(HKEY_LOCAL_MACHINE, path, KEY_ALL_ACCESS), 0);
    const std::wstring elsewhere = L"D:\\Older\\Client20.dll";
    ASSERT_EQ(::RegSetValueExW(server.get(), L"", 0, REG_SZ,
                               reinterpret_cast<const BYTE*>(elsewhere.c_str()),
                               static_cast<DWORD>((elsewhere.size() + 1) * sizeof(wchar_t))),
              0);
    const Content before = registered();
    const Protected denied({classes(ownKeys[4]), KEY_WOW64_64KEY});
    EXPECT_EQ(dll_.registerServer(), accessDenied);
    EXPECT_EQ(registered(), before);
}

}  // namespace
}  // namespace tandril::test
