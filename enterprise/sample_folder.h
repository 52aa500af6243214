#pragma once

#include <filesystem>
#include <string>

#include "enterprise/language.h"
#include "enterprise/master_tables.h"

namespace tandril::enterprise {

// What the server starts from, read once. Texts are the bytes of their files.
class SampleFolder {
  public:
    // Throws std::runtime_error that names the file when one is missing or not well-formed.
    explicit SampleFolder(const std::filesystem::path& folder);

    const std::string& fieldMapper(Language language) const;
    const std::string& orders() const { return orders_; }
    const std::string& masterDataChanges() const { return masterDataChanges_; }
    // The rows of the delivered database with the rows that masterDataChanges() inserts.
    const MasterTables& masterTables() const { return tables_; }

  private:
    std::string english_;
    std::string german_;
    std::string dutch_;
    std::string orders_;
    std::string masterDataChanges_;
    MasterTables tables_;
};

}  // namespace tandril::enterprise
