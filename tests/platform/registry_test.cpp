// What every registry has to keep to: the same cases run on the fake and on the real one.
#include "platform/registry.h"

#include <gmock/gmock.h>

#include "platform/fault.h"
#include "real_ports.h"
#include "support/memory_registry.h"

namespace tandril::test {
namespace {

using platform::Durability;
using platform::RegistryRoot;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::UnorderedElementsAre;

struct InMemory {
    MemoryRegistry registry;
};

constexpr RegistryRoot root = RegistryRoot::LocalMachine;
constexpr std::string_view keyPath = "SOFTWARE\\Vorn\\Vorn Tandril";

template <typename Machine>
class RegistryTest : public ::testing::Test {
  protected:
    platform::Registry& registry() { return machine_.registry; }
    std::optional<std::string> read(std::string_view name) {
        return registry().read(root, keyPath, name);
    }
    // Writes what is set, and forgets what was read.
    void save() {
        registry().flush(Durability::Durable);
        registry().refresh();
    }

  private:
    Machine machine_;
};

using Machines = ::testing::Types<InMemory, RealRegistry>;
TYPED_TEST_SUITE(RegistryTest, Machines);

TYPED_TEST(RegistryTest, ANewRegistryHasOnlyItsRoots) {
    EXPECT_TRUE(this->registry().keyExists(root, ""));
    EXPECT_TRUE(this->registry().keyExists(RegistryRoot::CurrentUser, ""));
    EXPECT_FALSE(this->registry().keyExists(root, "SOFTWARE"));
    EXPECT_THAT(this->registry().subKeys(root, ""), IsEmpty());
    EXPECT_THAT(this->registry().valueNames(root, keyPath), IsEmpty());
    EXPECT_EQ(this->read("Mode"), std::nullopt);
}

TYPED_TEST(RegistryTest, CreateKeyCreatesItsParents) {
    this->registry().createKey(root, keyPath);
    this->save();
    EXPECT_TRUE(this->registry().keyExists(root, keyPath));
    EXPECT_TRUE(this->registry().keyExists(root, "SOFTWARE\\Vorn"));
    EXPECT_FALSE(this->registry().keyExists(root, "SOFTWARE\\Vor"));
    EXPECT_FALSE(this->registry().keyExists(RegistryRoot::CurrentUser, keyPath));
    EXPECT_THAT(this->registry().subKeys(root, ""), ElementsAre("SOFTWARE"));
    EXPECT_THAT(this->registry().subKeys(root, "SOFTWARE"), ElementsAre("Vorn"));
}

TYPED_TEST(RegistryTest, CreateKeyLeavesAnExistingKeyAsItIs) {
    this->registry().createKey(root, keyPath);
    this->registry().setText(root, keyPath, "Mode", "Online");
    this->registry().createKey(root, "software\\VORN\\vorn tandril");
    EXPECT_THAT(this->registry().subKeys(root, "SOFTWARE\\Vorn"), ElementsAre("Vorn Tandril"));
    EXPECT_THAT(this->read("Mode"), Optional(std::string("Online")));
}

TYPED_TEST(RegistryTest, ANewKeyTakesTheLettersOfItsParents) {
    this->registry().createKey(root, "SOFTWARE\\Vorn");
    this->registry().createKey(root, "Software\\VORN\\Other");
    this->registry().createKey(root, "Software\\Next");
    this->save();
    EXPECT_THAT(this->registry().subKeys(root, ""), ElementsAre("SOFTWARE"));
    EXPECT_THAT(this->registry().subKeys(root, "SOFTWARE"), UnorderedElementsAre("Vorn", "Next"));
    EXPECT_THAT(this->registry().subKeys(root, "SOFTWARE\\Vorn"), ElementsAre("Other"));
}

TYPED_TEST(RegistryTest, KeysOpenInAnyCase) {
    this->registry().createKey(root, keyPath);
    this->registry().setText(root, "software\\vorn\\VORN TANDRIL", "Mode", "Online");
    EXPECT_TRUE(this->registry().keyExists(root, "software\\vorn"));
    EXPECT_THAT(this->registry().subKeys(root, "software\\VORN"), ElementsAre("Vorn Tandril"));
    EXPECT_THAT(this->read("Mode"), Optional(std::string("Online")));
}

TYPED_TEST(RegistryTest, ValueNamesCompareExactly) {
    this->registry().createKey(root, keyPath);
    this->registry().setText(root, keyPath, "Mode", "Online");
    EXPECT_EQ(this->read("mode"), std::nullopt);
    EXPECT_EQ(this->read("Mode "), std::nullopt);
    EXPECT_FALSE(this->registry().setExisting(root, keyPath, "MODE", "x"));
    EXPECT_THAT(this->read("Mode"), Optional(std::string("Online")));
}

TYPED_TEST(RegistryTest, EachValueIsNamedOnce) {
    this->registry().createKey(root, keyPath);
    this->registry().setText(root, keyPath, "b", "1");
    this->registry().setNumber(root, keyPath, "c", 2);
    this->registry().setText(root, keyPath, "a", "3");
    this->registry().setText(root, keyPath, "b", "4");
    this->save();
    EXPECT_THAT(this->registry().valueNames(root, keyPath), UnorderedElementsAre("b", "c", "a"));
    EXPECT_THAT(this->read("b"), Optional(std::string("4")));
}

TYPED_TEST(RegistryTest, TheDefaultValueIsNotListed) {
    this->registry().createKey(root, keyPath);
    this->registry().setText(root, keyPath, "", "default");
    this->registry().setText(root, keyPath, "a", "1");
    this->save();
    EXPECT_THAT(this->registry().valueNames(root, keyPath), ElementsAre("a"));
    EXPECT_THAT(this->read(""), Optional(std::string("default")));
}

TYPED_TEST(RegistryTest, AnyTextComesBack) {
    using namespace std::string_literals;
    const std::string texts[] = {"",
                                 "\"",
                                 "\\",
                                 "C:\\Vorn Tandril\\MasterData\\",
                                 "a\r\nb\n",
                                 "]",
                                 "; \"=[a]",
                                 "Gr\xC3\xB6\xC3\x9F"
                                 "e \xF0\x9F\x94\xA7"};
    this->registry().createKey(root, keyPath);
    for (const std::string& text : texts) {
        this->registry().setText(root, keyPath, "name of " + text, text);
    }
    this->save();
    for (const std::string& text : texts) {
        EXPECT_THAT(this->read("name of " + text), Optional(text));
    }
}

TYPED_TEST(RegistryTest, NumbersReadInDecimal) {
    this->registry().createKey(root, keyPath);
    for (const std::uint32_t number : {0u, 10u, 32768u, 4294967295u}) {
        this->registry().setNumber(root, keyPath, "OrderId", number);
        this->save();
        EXPECT_THAT(this->read("OrderId"), Optional(std::to_string(number)));
    }
}

TYPED_TEST(RegistryTest, SettingNeedsTheKey) {
    EXPECT_THROW(this->registry().setText(root, keyPath, "Mode", "x"), Fault);
    EXPECT_THROW(this->registry().setNumber(root, keyPath, "OrderId", 1), Fault);
    EXPECT_FALSE(this->registry().setExisting(root, keyPath, "Mode", "x"));
    EXPECT_FALSE(this->registry().keyExists(root, keyPath));
}

TYPED_TEST(RegistryTest, SettingChangesTheType) {
    this->registry().createKey(root, keyPath);
    this->registry().setNumber(root, keyPath, "a", 5);
    this->registry().setText(root, keyPath, "a", "5");
    this->registry().setText(root, keyPath, "b", "7");
    this->registry().setNumber(root, keyPath, "b", 7);
    this->save();
    this->registry().setExisting(root, keyPath, "a", "text");
    this->registry().setExisting(root, keyPath, "b", "text");
    EXPECT_THAT(this->read("a"), Optional(std::string("text")));
    EXPECT_THAT(this->read("b"), Optional(std::string("0")));
}

TYPED_TEST(RegistryTest, SettingAnExistingNumberTakesTheLeadingDigits) {
    constexpr struct {
        const char* text;
        const char* number;
    } cases[] = {{"12", "12"},
                 {"000000001", "1"},
                 {"7x9", "7"},
                 {"", "0"},
                 {"x", "0"},
                 {"-3", "0"},
                 {" 4", "0"},
                 {"4294967295", "4294967295"},
                 {"4294967296", "4294967295"},
                 {"99999999999999999999", "4294967295"}};
    this->registry().createKey(root, keyPath);
    this->registry().setNumber(root, keyPath, "OrderId", 1);
    for (const auto& [text, number] : cases) {
        EXPECT_TRUE(this->registry().setExisting(root, keyPath, "OrderId", text));
        EXPECT_THAT(this->read("OrderId"), Optional(std::string(number))) << text;
    }
}

TEST(MemoryRegistryTest, RefreshDropsWhatWasNotFlushed) {
    MemoryRegistry registry;
    registry.createKey(root, keyPath);
    registry.setText(root, keyPath, "Mode", "Online");
    registry.flush(Durability::Durable);
    registry.setText(root, keyPath, "Mode", "Offline");
    EXPECT_THAT(registry.read(root, keyPath, "Mode"), Optional(std::string("Offline")));
    registry.refresh();
    EXPECT_THAT(registry.read(root, keyPath, "Mode"), Optional(std::string("Online")));
}

TEST(MemoryRegistryTest, ValuesKeepTheirOrder) {
    MemoryRegistry registry;
    registry.createKey(root, keyPath);
    registry.setText(root, keyPath, "b", "1");
    registry.setText(root, keyPath, "a", "2");
    registry.setText(root, keyPath, "b", "3");
    EXPECT_THAT(registry.valueNames(root, keyPath), ElementsAre("b", "a"));
}

TEST(MemoryRegistryTest, SavesOnlyWhatChanged) {
    MemoryRegistry registry;
    registry.createKey(root, keyPath);
    registry.setText(root, keyPath, "Error", "1");
    registry.flush(Durability::Durable);
    registry.setText(root, keyPath, "Error", "");
    registry.setText(root, keyPath, "Error", "1");
    registry.flush(Durability::Durable);
    registry.setNumber(root, keyPath, "OrderId", 2);
    registry.flush(Durability::Relaxed);
    EXPECT_THAT(registry.saves(), ElementsAre(Durability::Durable, Durability::Relaxed));
    EXPECT_EQ(registry.dump(),
              "HKLM\\SOFTWARE\nHKLM\\SOFTWARE\\Vorn\nHKLM\\SOFTWARE\\Vorn\\Vorn Tandril\n"
              "  Error=1\n  OrderId=#2\n");
}

TEST(MemoryRegistryTest, AFailedFlushLeavesWhatWasFlushed) {
    MemoryRegistry registry;
    registry.createKey(root, "SOFTWARE");
    registry.failFlushes(true);
    EXPECT_THROW(registry.flush(Durability::Durable), Fault);
    registry.refresh();
    EXPECT_FALSE(registry.keyExists(root, "SOFTWARE"));
}

}  // namespace
}  // namespace tandril::test
