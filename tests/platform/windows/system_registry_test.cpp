// What the registry of Windows adds to the cases of every registry.
#include "platform/windows/system_registry.h"

#include <gmock/gmock.h>

#include "platform/fault.h"
#include "real_ports.h"

namespace tandril::test {
namespace {

using platform::Durability;
using platform::RegistryRoot;
using platform::SystemRegistry;
using ::testing::ElementsAre;
using ::testing::Optional;

constexpr RegistryRoot root = RegistryRoot::LocalMachine;

class SystemRegistryTest : public ::testing::Test {
  protected:
    void SetUp() override { registry.createKey(root, "Key"); }
    void put(const wchar_t* name, DWORD type, const std::string& bytes) {
        ::RegSetKeyValueW(scratch.get(), L"Key", name, type, bytes.data(),
                          static_cast<DWORD>(bytes.size()));
    }
    DWORD typeOf(const wchar_t* name) const {
        DWORD type = REG_NONE;
        ::RegGetValueW(scratch.get(), L"Key", name, RRF_RT_ANY | RRF_NOEXPAND, &type, nullptr,
                       nullptr);
        return type;
    }

    ScratchKey scratch;
    ScratchKey user;
    SystemRegistry registry{scratch.get(), user.get()};
};

TEST_F(SystemRegistryTest, ChangesTakeEffectAtOnce) {
    registry.setText(root, "Key", "Mode", "Offline");
    const SystemRegistry other(scratch.get(), user.get());
    EXPECT_THAT(other.read(root, "Key", "Mode"), Optional(std::string("Offline")));
    registry.flush(Durability::Durable);
    registry.refresh();
    EXPECT_THAT(registry.read(root, "Key", "Mode"), Optional(std::string("Offline")));
}

TEST_F(SystemRegistryTest, TextsAndNumbersHaveTheirTypes) {
    registry.setText(root, "Key", "Mode", "Online");
    registry.setNumber(root, "Key", "OrderId", 1);
    EXPECT_EQ(typeOf(L"Mode"), static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(typeOf(L"OrderId"), static_cast<DWORD>(REG_DWORD));
}

TEST_F(SystemRegistryTest, AnExistingValueKeepsItsType) {
    put(L"Path", REG_EXPAND_SZ, std::string(2, '\0'));
    EXPECT_TRUE(registry.setExisting(root, "Key", "Path", "%TEMP%"));
    EXPECT_EQ(typeOf(L"Path"), static_cast<DWORD>(REG_EXPAND_SZ));
    EXPECT_THAT(registry.read(root, "Key", "Path"), Optional(std::string("%TEMP%")));
}

TEST_F(SystemRegistryTest, OtherTypesReadAsNothingAndStayAsTheyAre) {
    put(L"Bytes", REG_BINARY, "abcd");
    EXPECT_THAT(registry.read(root, "Key", "Bytes"), Optional(std::string()));
    EXPECT_THROW(registry.setExisting(root, "Key", "Bytes", "x"), Fault);
    EXPECT_EQ(typeOf(L"Bytes"), static_cast<DWORD>(REG_BINARY));
}

TEST_F(SystemRegistryTest, ATextWithoutItsZeroIsReadWhole) {
    put(L"Odd", REG_SZ, std::string("a\0b\0", 4));
    EXPECT_THAT(registry.read(root, "Key", "Odd"), Optional(std::string("ab")));
    put(L"Odder", REG_SZ, std::string("a\0b", 3));
    EXPECT_THAT(registry.read(root, "Key", "Odder"), Optional(::testing::StartsWith("a")));
}

TEST_F(SystemRegistryTest, ALongTextComesBackWhole) {
    const std::string text(100'000, 'x');
    registry.setText(root, "Key", "Long", text);
    EXPECT_THAT(registry.read(root, "Key", "Long"), Optional(text));
}

TEST_F(SystemRegistryTest, TheRootsAreThoseOfTheMachineByDefault) {
    const SystemRegistry machine;
    EXPECT_TRUE(machine.keyExists(root, "SOFTWARE\\Microsoft"));
    EXPECT_TRUE(machine.keyExists(RegistryRoot::CurrentUser, "Software\\Microsoft"));
}

}  // namespace
}  // namespace tandril::test
