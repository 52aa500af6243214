#pragma once

#include <optional>
#include <string>

#include "platform/home/reg_text.h"
#include "platform/registry.h"

namespace tandril::platform {

// The registry in a file of the registry editor's text form. A missing file is an empty registry,
// and comes into being with the first flush that has something to write. The file is read with the
// first look after refresh(); a malformed one is a fault then, and is never written to.
class RegistryFile final : public Registry {
  public:
    explicit RegistryFile(std::string path) : path_(std::move(path)) {}

    void refresh() override;
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
    // What was read, with the changes since, and the bytes as they are in the file.
    struct Content {
        RegText text;
        std::string saved;
    };
    Content& content() const;
    RegText& text() const { return content().text; }

    std::string path_;
    mutable std::optional<Content> content_;  // nothing until the first look
};

}  // namespace tandril::platform
