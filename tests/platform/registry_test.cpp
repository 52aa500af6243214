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

constexpr RegistryRoot kRoot = RegistryRoot::LocalMachine;
constexpr std::string_view kKey = "SOFTWARE\\Vorn\\Vorn Tandril";

template <typename Machine>
class RegistryTest : public ::testing::Test {
  protected:
    platform::Registry& registry() { return machine_.registry; }
    std::optional<std::string> read(std::string_view name) {
        return registry().read(kRoot, kKey, name);
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
    EXPECT_TRUE(this->registry().keyExists(kRoot, ""));
    EXPECT_TRUE(this->registry().keyExists(RegistryRoot::CurrentUser, ""));
    EXPECT_FALSE(this->registry().keyExists(kRoot, "SOFTWARE"));
    EXPECT_THAT(this->registry().subKeys(kRoot, ""), IsEmpty());
    EXPECT_THAT(this->registry().valueNames(kRoot, kKey), IsEmpty());
    EXPECT_EQ(this->read("Mode"), std::nullopt);
}

TYPED_TEST(RegistryTest, CreateKeyCreatesItsParents) {
    this->registry().createKey(kRoot, kKey);
    this->save();
    EXPECT_TRUE(this->registry().keyExists(kRoot, kKey));
    EXPECT_TRUE(this->registry().keyExists(kRoot, "SOFTWARE\\Vorn"));
    EXPECT_FALSE(this->registry().keyExists(kRoot, "SOFTWARE\\Vor"));
    EXPECT_FALSE(this->registry().keyExists(RegistryRoot::CurrentUser, kKey));
    EXPECT_THAT(this->registry().subKeys(kRoot, ""), ElementsAre("SOFTWARE"));
    EXPECT_THAT(this->registry().subKeys(kRoot, "SOFTWARE"), ElementsAre("Vorn"));
}

TYPED_TEST(RegistryTest, CreateKeyLeavesAnExistingKeyAsItIs) {
    this->registry().createKey(kRoot, kKey);
    this->registry().setText(kRoot, kKey, "Mode", "Online");
    this->registry().createKey(kRoot, "software\\VORN\\vorn tandril");
    EXPECT_THAT(this->registry().subKeys(kRoot, "SOFTWARE\\Vorn"), ElementsAre("Vorn Tandril"));
    EXPECT_THAT(this->read("Mode"), Optional(std::string("Online")));
}

TYPED_TEST(RegistryTest, ANewKeyTakesTheLettersOfItsParents) {
    this->registry().createKey(kRoot, "SOFTWARE\\Vorn");
    this->registry().createKey(kRoot, "Software\\VORN\\Other");
    this->registry().createKey(kRoot, "Software\\Next");
    this->save();
    EXPECT_THAT(this->registry().subKeys(kRoot, ""), ElementsAre("SOFTWARE"));
    EXPECT_THAT(this->registry().subKeys(kRoot, "SOFTWARE"), UnorderedElementsAre("Vorn", "Next"));
    EXPECT_THAT(this->registry().subKeys(kRoot, "SOFTWARE\\Vorn"), ElementsAre("Other"));
}

TYPED_TEST(RegistryTest, KeysOpenInAnyCase) {
    this->registry().createKey(kRoot, kKey);
    this->registry().setText(kRoot, "software\\vorn\\VORN TANDRIL", "Mode", "Online");
    EXPECT_TRUE(this->registry().keyExists(kRoot, "software\\vorn"));
    EXPECT_THAT(this->registry().subKeys(kRoot, "software\\VORN"), ElementsAre("Vorn Tandril"));
    EXPECT_THAT(this->read("Mode"), Optional(std::string("Online")));
}

TYPED_TEST(RegistryTest, ValueNamesCompareExactly) {
    this->registry().createKey(kRoot, kKey);
    this->registry().setText(kRoot, kKey, "Mode", "Online");
    EXPECT_EQ(this->read("mode"), std::nullopt);
    EXPECT_EQ(this->read("Mode "), std::nullopt);
    EXPECT_FALSE(this->registry().setExisting(kRoot, kKey, "MODE", "x"));
    EXPECT_THAT(this->read("Mode"), Optional(std::string("Online")));
}

TYPED_TEST(RegistryTest, EachValueIsNamedOnce) {
    this->registry().createKey(kRoot, kKey);
    this->registry().setText(kRoot, kKey, "b", "1");
    this->registry().setNumber(kRoot, kKey, "c", 2);
    this->registry().setText(kRoot, kKey, "a", "3");
    this->registry().setText(kRoot, kKey, "b", "4");
    this->save();
    EXPECT_THAT(this->registry().valueNames(kRoot, kKey), UnorderedElementsAre("b", "c", "a"));
    EXPECT_THAT(this->read("b"), Optional(std::string("4")));
}

TYPED_TEST(RegistryTest, TheDefaultValueIsNotListed) {
    this->registry().createKey(kRoot, kKey);
    this->registry().setText(kRoot, kKey, "", "default");
    this->registry().setText(kRoot, kKey, "a", "1");
    this->save();
    EXPECT_THAT(this->registry().valueNames(kRoot, kKey), ElementsAre("a"));
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
    this->registry().createKey(kRoot, kKey);
    for (const std::string& text : texts) {
        this->registry().setText(kRoot, kKey, "name of " + text, text);
    }
    this->save();
    for (const std::string& text : texts) {
        EXPECT_THAT(this->read("name of " + text), Optional(text));
    }
}

TYPED_TEST(RegistryTest, NumbersReadInDecimal) {
    this->registry().createKey(kRoot, kKey);
    for (const std::uint32_t number : {0u, 10u, 32768u, 4294967295u}) {
        this->registry().setNumber(kRoot, kKey, "OrderId", number);
        this->save();
        EXPECT_THAT(this->read("OrderId"), Optional(std::to_string(number)));
    }
}

TYPED_TEST(RegistryTest, SettingNeedsTheKey) {
    EXPECT_THROW(this->registry().setText(kRoot, kKey, "Mode", "x"), Fault);
    EXPECT_THROW(this->registry().setNumber(kRoot, kKey, "OrderId", 1), Fault);
    EXPECT_FALSE(this->registry().setExisting(kRoot, kKey, "Mode", "x"));
    EXPECT_FALSE(this->registry().keyExists(kRoot, kKey));
}

TYPED_TEST(RegistryTest, SettingChangesTheType) {
    this->registry().createKey(kRoot, kKey);
    this->registry().setNumber(kRoot, kKey, "a", 5);
    this->registry().setText(kRoot, kKey, "a", "5");
    this->registry().setText(kRoot, kKey, "b", "7");
    this->registry().setNumber(kRoot, kKey, "b", 7);
    this->save();
    this->registry().setExisting(kRoot, kKey, "a", "text");
    this->registry().setExisting(kRoot, kKey, "b", "text");
    EXPECT_THAT(this->read("a"), Optional(std::string("text")));
    EXPECT_THAT(this->read("b"), Optional(std::string("0")));
}

TYPED_TEST(RegistryTest, SettingAnExistingNumberTakesTheLeadingDigits) {
    constexpr struct {
        const char* text;
        const char* number;
    } kCases[] = {{"12", "12"},
                  {"000000001", "1"},
                  {"7x9", "7"},
                  {"", "0"},
                  {"x", "0"},
                  {"-3", "0"},
                  {" 4", "0"},
                  {"4294967295", "4294967295"},
                  {"4294967296", "4294967295"},
                  {"99999999999999999999", "4294967295"}};
    this->registry().createKey(kRoot, kKey);
    this->registry().setNumber(kRoot, kKey, "OrderId", 1);
    for (const auto& [text, number] : kCases) {
        EXPECT_TRUE(this->registry().setExisting(kRoot, kKey, "OrderId", text));
        EXPECT_THAT(this->read("OrderId"), Optional(std::string(number))) << text;
    }
}

TEST(MemoryRegistryTest, RefreshDropsWhatWasNotFlushed) {
    MemoryRegistry registry;
    registry.createKey(kRoot, kKey);
    registry.setText(kRoot, kKey, "Mode", "Online");
    registry.flush(Durability::Durable);
    registry.setText(kRoot, kKey, "Mode", "Offline");
    EXPECT_THAT(registry.read(kRoot, kKey, "Mode"), Optional(std::string("Offline")));
    registry.refresh();
    EXPECT_THAT(registry.read(kRoot, kKey, "Mode"), Optional(std::string("Online")));
}

TEST(MemoryRegistryTest, ValuesKeepTheirOrder) {
    MemoryRegistry registry;
    registry.createKey(kRoot, kKey);
    registry.setText(kRoot, kKey, "b", "1");
    registry.setText(kRoot, kKey, "a", "2");
    registry.setText(kRoot, kKey, "b", "3");
    EXPECT_THAT(registry.valueNames(kRoot, kKey), ElementsAre("b", "a"));
}

TEST(MemoryRegistryTest, SavesOnlyWhatChanged) {
    MemoryRegistry registry;
    registry.createKey(kRoot, kKey);
    registry.setText(kRoot, kKey, "Error", "1");
    registry.flush(Durability::Durable);
    registry.setText(kRoot, kKey, "Error", "");
    registry.setText(kRoot, kKey, "Error", "1");
    registry.flush(Durability::Durable);
    registry.setNumber(kRoot, kKey, "OrderId", 2);
    registry.flush(Durability::Relaxed);
    EXPECT_THAT(registry.saves(), ElementsAre(Durability::Durable, Durability::Relaxed));
    EXPECT_EQ(registry.dump(),
              "HKLM\\SOFTWARE\nHKLM\\SOFTWARE\\Vorn\nHKLM\\SOFTWARE\\Vorn\\Vorn Tandril\n"
              "  Error=1\n  OrderId=#2\n");
}

TEST(MemoryRegistryTest, AFailedFlushLeavesWhatWasFlushed) {
    MemoryRegistry registry;
    registry.createKey(kRoot, "SOFTWARE");
    registry.failFlushes(true);
    EXPECT_THROW(registry.flush(Durability::Durable), Fault);
    registry.refresh();
    EXPECT_FALSE(registry.keyExists(kRoot, "SOFTWARE"));
}

}  // namespace
}  // namespace tandril::test
