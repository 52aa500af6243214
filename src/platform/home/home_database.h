#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/database.h"
#include "platform/registry.h"

namespace tandril::platform {

// The data sources that the registry of a home names, in the key
// HKEY_LOCAL_MACHINE\SOFTWARE\ODBC\odbc.ini\<name>. The value `DBQ` is the system path of the
// database file, and what the file holds decides how it is opened (see openDatabaseFile). A value
// `ConnectionString` that is not empty overrides that: it is an ODBC connection string for any
// driver, used as it stands.
class HomeDatabase final : public Database {
  public:
    // Where a system path lies on this machine, nothing when it might lead out of the home.
    using RealPath = std::function<std::optional<std::string>(std::string_view)>;

    // Both must outlive the object.
    HomeDatabase(RealPath realPath, const Registry& registry)
        : realPath_(std::move(realPath)), registry_(registry) {}

    std::unique_ptr<Connection> open(std::string_view dsn) override;

  private:
    RealPath realPath_;
    const Registry& registry_;
};

}  // namespace tandril::platform
