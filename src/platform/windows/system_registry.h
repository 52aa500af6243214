#pragma once

#include <windows.h>

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "platform/registry.h"

namespace tandril::platform {

// The registry of Windows, in the view of this process: a 32-bit process on a 64-bit system has
// settings of its own. Changes take effect at once. Keys are opened with no more rights than the
// function at hand needs.
class SystemRegistry final : public Registry {
  public:
    // The keys stand for the two roots and stay open as long as the object.
    explicit SystemRegistry(HKEY localMachine = HKEY_LOCAL_MACHINE,
                            HKEY currentUser = HKEY_CURRENT_USER)
        : localMachine_(localMachine), currentUser_(currentUser) {}

    void refresh() override {}
    bool keyExists(RegistryRoot root, std::string_view path) const override;
    std::vector<std::string> subKeys(RegistryRoot root, std::string_view path) const override;
    std::vector<std::string> valueNames(RegistryRoot root, std::string_view path) const override;
    std::optional<std::string> read(RegistryRoot root, std::string_view path,
                                    std::string_view name) const override;
    void createKey(RegistryRoot root, std::string_view path) override;
    void setText(RegistryRoot root, std::string_view path, std::string_view name,
                 std::string_view text) override;
    void setNumber(RegistryRoot root, std::string_view path, std::string_view name,
                   std::uint32_t number) override;
    bool setExisting(RegistryRoot root, std::string_view path, std::string_view name,
                     std::string_view text) override;
    void flush(Durability durability) override;

  private:
    HKEY handleOf(RegistryRoot root) const;
    void set(RegistryRoot root, std::string_view path, std::string_view name, DWORD type,
             std::string_view text);

    HKEY localMachine_;
    HKEY currentUser_;
    std::set<std::pair<RegistryRoot, std::string>> changed_;  // keys, since the last flush
};

}  // namespace tandril::platform
