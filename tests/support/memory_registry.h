#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/registry.h"

namespace tandril::test {

// A registry in memory. What was set counts for the next looks at once, and stays over a refresh()
// only once it was flushed.
class MemoryRegistry : public platform::Registry {
  public:
    void refresh() override;
    bool keyExists(platform::RegistryRoot root, std::string_view path) const override;
    std::vector<std::string> subKeys(platform::RegistryRoot root,
                                     std::string_view path) const override;
    std::vector<std::string> valueNames(platform::RegistryRoot root,
                                        std::string_view path) const override;
    std::optional<std::string> read(platform::RegistryRoot root, std::string_view path,
                                    std::string_view name) const override;
    void createKey(platform::RegistryRoot root, std::string_view path) override;
    void setText(platform::RegistryRoot root, std::string_view path, std::string_view name,
                 std::string_view text) override;
    void setNumber(platform::RegistryRoot root, std::string_view path, std::string_view name,
                   std::uint32_t number) override;
    bool setExisting(platform::RegistryRoot root, std::string_view path, std::string_view name,
                     std::string_view text) override;
    void flush(platform::Durability durability) override;

    // The flushes that had something to write, in their order.
    const std::vector<platform::Durability>& saves() const { return saves_; }
    void forgetSaves() { saves_.clear(); }
    // From now on each flush that has something to write throws Fault.
    void failFlushes(bool fail) { failFlushes_ = fail; }

    // Whether a value is there as a number.
    bool isNumber(platform::RegistryRoot root, std::string_view path, std::string_view name) const;
    // Every key with its values, in their order, a line each, as it was flushed:
    // "HKLM\SOFTWARE\Vorn", "  Mode=Online", "  OrderId=#1".
    std::string dump() const;

  private:
    using Data = std::variant<std::string, std::uint32_t>;
    struct Value {
        std::string name;
        Data data;
        bool operator==(const Value&) const = default;
    };
    struct Key {
        platform::RegistryRoot root;
        std::string path;
        std::vector<Value> values;
        bool operator==(const Key&) const = default;
    };

    const Key* findKey(platform::RegistryRoot root, std::string_view path) const;
    const Value* findValue(platform::RegistryRoot root, std::string_view path,
                           std::string_view name) const;
    void set(platform::RegistryRoot root, std::string_view path, std::string_view name, Data data);

    std::vector<Key> keys_;
    std::vector<Key> flushed_;
    std::vector<platform::Durability> saves_;
    bool failFlushes_ = false;
};

}  // namespace tandril::test
