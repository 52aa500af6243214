#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace tandril::platform {

enum class RegistryRoot { LocalMachine, CurrentUser };

// The registry. Key paths are relative to a root, their parts separated by backslashes
// ("SOFTWARE\Vorn\Vorn Tandril"). Keys open in any case, as in Windows; names of values and of
// enumerated sub-keys come as they are stored and compare exactly, in their case. Not safe for
// concurrent use.
//
// A key that does not exist has no sub-keys and no values. Every function that cannot do what it
// says throws Fault.
class Registry {
  public:
    virtual ~Registry() = default;

    // Forgets what was read, so that the next look sees changes that others made meanwhile. What
    // was set but not flushed is dropped.
    virtual void refresh() = 0;

    virtual bool keyExists(RegistryRoot root, std::string_view path) const = 0;
    // Names of the direct sub-keys, in their stored order.
    virtual std::vector<std::string> subKeys(RegistryRoot root, std::string_view path) const = 0;
    // Names of the values, in their stored order. The unnamed default value is left out.
    virtual std::vector<std::string> valueNames(RegistryRoot root, std::string_view path) const = 0;

    // Data of the value as text, a number in decimal; nothing when there is no such value. Data of
    // other types than text and number reads as "".
    virtual std::optional<std::string> read(RegistryRoot root, std::string_view path,
                                            std::string_view name) const = 0;

    // Creates the key with all its parents. An existing key stays as it is.
    virtual void createKey(RegistryRoot root, std::string_view path) = 0;

    // Sets a value, creating or retyping it; the key must exist.
    virtual void setText(RegistryRoot root, std::string_view path, std::string_view name,
                         std::string_view text) = 0;
    virtual void setNumber(RegistryRoot root, std::string_view path, std::string_view name,
                           std::uint32_t number) = 0;

    // Sets the data of a value that exists and keeps its type: a number takes the decimal number
    // that the text begins with, 0 when there is none. Returns false, and changes nothing, when
    // there is no such value.
    virtual bool setExisting(RegistryRoot root, std::string_view path, std::string_view name,
                             std::string_view text) = 0;

    // Writes what changed, and nothing when nothing did. Where changes take effect at once this
    // only waits for the disk when asked to.
    virtual void flush(Durability durability) = 0;
};

}  // namespace tandril::platform
