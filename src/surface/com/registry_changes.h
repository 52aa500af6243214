#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace tandril::com {

// Keys and texts that are added to the registry all together or not at all: what is not kept when
// the object is destroyed is taken back.
class RegistryChanges {
  public:
    // Below that key, which stays open as long as the object.
    explicit RegistryChanges(HKEY root) : root_(root) {}
    ~RegistryChanges();
    RegistryChanges(const RegistryChanges&) = delete;
    RegistryChanges& operator=(const RegistryChanges&) = delete;

    // Sets a value (its name is "" for the key's default) and creates its key where that is
    // missing. Throws ComError.
    void setText(const std::wstring& path, const std::wstring& name, const std::wstring& text);

    void keep() { steps_.clear(); }

  private:
    struct Data {
        DWORD type;
        std::vector<BYTE> bytes;
    };
    // A key that was made, or a value that was set in place of `before`.
    struct Step {
        std::wstring path;
        std::optional<std::wstring> valueName;
        std::optional<Data> before;
    };

    void createKey(const std::wstring& path);
    std::optional<Data> readValue(const std::wstring& path, const std::wstring& name) const;
    void takeBack(const Step& step) const;

    HKEY root_;
    std::vector<Step> steps_;
};

}  // namespace tandril::com
