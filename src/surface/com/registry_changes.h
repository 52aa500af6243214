#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tandril::com {

// A text in the registry.
struct RegistryText {
    std::wstring path;  // of its key
    std::wstring name;  // "" for the key's default
    std::wstring text;
    REGSAM view = 0;  // KEY_WOW64_32KEY or KEY_WOW64_64KEY; 0: the view of this process
};

// Texts that are added to the registry, or removed from it, all together or not at all: what is not
// kept when the object is destroyed is taken back.
class RegistryChanges {
  public:
    // Below that key, which stays open as long as the object. Foreign keys stay even when they
    // become empty: they are not of those who write into them.
    explicit RegistryChanges(HKEY root, std::vector<std::wstring> foreignKeys = {})
        : root_(root), foreignKeys_(std::move(foreignKeys)) {}
    ~RegistryChanges();
    RegistryChanges(const RegistryChanges&) = delete;
    RegistryChanges& operator=(const RegistryChanges&) = delete;

    // Creates the key where that is missing. Throws ComError.
    void set(const RegistryText& row);
    // Removes the value, whatever it holds, then its key and those above it, as far as nothing else
    // is in them. What is not there is removed already. Throws ComError.
    void remove(const RegistryText& row);

    void keep() { steps_.clear(); }

  private:
    struct Data {
        DWORD type;
        std::vector<BYTE> bytes;
    };
    enum class Change { keyMade, keyDeleted, value };
    struct Step {
        Change change;
        REGSAM view;
        std::wstring path;
        std::wstring name;
        std::optional<Data> before;  // of a value: what it held, if it was there
    };

    // Makes the change, which says whether it could, and notes the step first: there might be no
    // memory for it afterwards.
    template <class Action>
    void make(Step step, const Action& action);
    void createKey(const std::wstring& path, REGSAM view);
    bool deleteIfEmpty(const std::wstring& path, REGSAM view);
    void takeBack(const Step& step) const;

    HKEY root_;
    std::vector<std::wstring> foreignKeys_;
    std::vector<Step> steps_;
};

}  // namespace tandril::com
