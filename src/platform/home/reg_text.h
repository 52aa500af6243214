#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/home/reg_document.h"

namespace tandril::platform {

// The keys and values of a registry file in the text form of the Windows registry editor (version
// 5.00), without the file. What is not changed keeps its bytes: unknown types, comments, the order,
// the encoding, the line ends.
//
// Keys are given with the name of their root ("HKEY_LOCAL_MACHINE\SOFTWARE") and are found in any
// case of the letters A to Z; names of values compare exactly. A key that stands in the file makes
// all its parents exist. Where a value stands there twice the last one counts, as on an import.
class RegText {
  public:
    // A registry without keys, to be written in UTF-8.
    RegText();

    // Throws Fault with the line number and the reason when the file is malformed.
    explicit RegText(std::string_view bytes) : document_(parseRegDocument(bytes)) {}

    std::string bytes() const { return serializeRegDocument(document_); }

    bool hasKey(std::string_view key) const;
    std::vector<std::string> subKeys(std::string_view key) const;
    std::vector<std::string> valueNames(std::string_view key) const;
    std::optional<std::string> read(std::string_view key, std::string_view name) const;

    // Adds the key, and its parents that are missing, at the end of the file.
    void addKey(std::string_view key);

    // The key must exist. A value that already has this type and data keeps its bytes.
    void setText(std::string_view key, std::string_view name, std::string_view text);
    void setNumber(std::string_view key, std::string_view name, std::uint32_t number);

    // As Registry::setExisting; throws Fault for a value that is neither text nor number.
    bool setExisting(std::string_view key, std::string_view name, std::string_view text);

  private:
    const RegLine* find(std::string_view key, std::string_view name) const;
    RegLine* find(std::string_view key, std::string_view name);
    RegLine& findOrAdd(std::string_view key, std::string_view name);
    std::string storedSpelling(std::string_view key) const;
    RegSection& addSection(const std::string& key);
    void addBlankLine();

    RegDocument document_;
};

}  // namespace tandril::platform
