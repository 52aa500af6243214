#pragma once

#include <memory>
#include <string>

#include "platform/database.h"
#include "platform/linux/home_files.h"
#include "platform/registry.h"

namespace tandril::platform {

// The data sources that the registry of a home names, in the key
// HKEY_LOCAL_MACHINE\SOFTWARE\ODBC\odbc.ini\<name>. The value `DBQ` is the system path of the
// database file, and what the file holds decides how it is opened (see openDatabaseFile). A value
// `ConnectionString` that is not empty overrides that: it is an ODBC connection string for any
// driver, used as it stands.
class HomeDatabase final : public Database {
  public:
    // Both must outlive the object.
    HomeDatabase(const HomeFiles& files, const Registry& registry)
        : files_(files), registry_(registry) {}

    std::unique_ptr<Connection> open(std::string_view dsn) override;

  private:
    const HomeFiles& files_;
    const Registry& registry_;
};

}  // namespace tandril::platform
