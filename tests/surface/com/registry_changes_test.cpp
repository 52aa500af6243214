// Changes of the registry that are made together or not at all.
#include "surface/com/registry_changes.h"

#include <gmock/gmock.h>

#include <random>
#include <stdexcept>

#include "platform/windows/registry_key.h"
#include "surface/com/com_error.h"

namespace tandril::com {
namespace {

using platform::RegistryKey;

class RegistryChangesTest : public testing::Test {
  protected:
    RegistryChangesTest() {
        if (root_.create(HKEY_CURRENT_USER, path_, KEY_ALL_ACCESS) != ERROR_SUCCESS) {
            throw std::runtime_error("cannot create a key of its own");
        }
    }
    ~RegistryChangesTest() override { ::RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str()); }

    bool hasKey(const std::wstring& path) const {
        RegistryKey key;
        return key.open(root_.get(), path, KEY_QUERY_VALUE) == ERROR_SUCCESS;
    }
    std::wstring text(const std::wstring& path, const std::wstring& name) const {
        wchar_t value[64] = {};
        DWORD size = sizeof value;
        const LSTATUS status = ::RegGetValueW(root_.get(), path.c_str(), name.c_str(),
                                              RRF_RT_REG_SZ, nullptr, value, &size);
        return status == ERROR_SUCCESS ? value : L"(none)";
    }
    // A text that no key can take: its name is too long.
    static std::wstring impossiblePath() { return L"First\\" + std::wstring(300, L'x'); }

    std::wstring path_ = L"Software\\Tandril test " + std::to_wstring(std::random_device()());
    RegistryKey root_;
};

TEST_F(RegistryChangesTest, KeptChangesStay) {
    {
        RegistryChanges changes(root_.get());
        changes.set({L"First\\Second", L"", L"one"});
        changes.set({L"First\\Second", L"Name", L"two"});
        changes.keep();
    }
    EXPECT_EQ(text(L"First\\Second", L""), L"one");
    EXPECT_EQ(text(L"First\\Second", L"Name"), L"two");
}

TEST_F(RegistryChangesTest, OthersAreTakenBackWithTheKeysMadeForThem) {
    {
        RegistryChanges changes(root_.get());
        changes.set({L"First\\Second", L"", L"one"});
        EXPECT_EQ(text(L"First\\Second", L""), L"one");
    }
    EXPECT_FALSE(hasKey(L"First\\Second"));
    EXPECT_FALSE(hasKey(L"First"));
}

TEST_F(RegistryChangesTest, WhatWasThereComesBack) {
    {
        RegistryChanges changes(root_.get());
        changes.set({L"First", L"Name", L"before"});
        changes.keep();
    }
    {
        RegistryChanges changes(root_.get());
        changes.set({L"First", L"Name", L"after"});
        changes.set({L"First\\New", L"", L"x"});
        EXPECT_EQ(text(L"First", L"Name"), L"after");
    }
    EXPECT_EQ(text(L"First", L"Name"), L"before");
    EXPECT_FALSE(hasKey(L"First\\New"));
}

TEST_F(RegistryChangesTest, RemovesAKeyWithItsLastValueAndTheEmptyOnesAbove) {
    {
        RegistryChanges changes(root_.get());
        changes.set({L"First\\Second\\Third", L"", L"one"});
        changes.set({L"First\\Second\\Third", L"Name", L"two"});
        changes.set({L"First", L"Name", L"three"});
        changes.keep();
    }
    RegistryChanges changes(root_.get());
    changes.remove({L"First\\Second\\Third", L"", {}});
    EXPECT_EQ(text(L"First\\Second\\Third", L"Name"), L"two");
    changes.remove({L"First\\Second\\Third", L"Name", {}});
    changes.keep();
    EXPECT_FALSE(hasKey(L"First\\Second"));
    EXPECT_EQ(text(L"First", L"Name"), L"three");
}

TEST_F(RegistryChangesTest, AForeignKeyStaysWhenItBecomesEmpty) {
    RegistryChanges changes(root_.get(), {L"First\\Second"});
    changes.set({L"First\\Second\\Third", L"", L"one"});
    changes.remove({L"First\\Second\\Third", L"", {}});
    changes.keep();
    EXPECT_FALSE(hasKey(L"First\\Second\\Third"));
    EXPECT_TRUE(hasKey(L"First\\Second"));
}

TEST_F(RegistryChangesTest, WhatWasRemovedComesBack) {
    {
        RegistryChanges changes(root_.get());
        changes.set({L"First\\Second", L"", L"one"});
        changes.set({L"First", L"Name", L"two"});
        changes.keep();
    }
    {
        RegistryChanges changes(root_.get());
        changes.remove({L"First\\Second", L"", {}});
        changes.remove({L"First", L"Name", {}});
        changes.remove({L"Never there", L"Name", {}});
        EXPECT_FALSE(hasKey(L"First"));
    }
    EXPECT_EQ(text(L"First\\Second", L""), L"one");
    EXPECT_EQ(text(L"First", L"Name"), L"two");
    EXPECT_FALSE(hasKey(L"Never there"));
}

TEST_F(RegistryChangesTest, AChangeThatFailsTakesTheOthersAlong) {
    try {
        RegistryChanges changes(root_.get());
        changes.set({L"First", L"", L"one"});
        changes.set({impossiblePath(), L"", L"two"});
        FAIL() << "no key can have such a name";
    } catch (const ComError& error) {
        EXPECT_TRUE(FAILED(error.result));
    }
    EXPECT_FALSE(hasKey(L"First"));
}

}  // namespace
}  // namespace tandril::com
