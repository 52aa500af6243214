#pragma once

#include "platform/database.h"

namespace tandril::platform {

// Stands where a build has no database access: opening is a fault that says so.
class UnavailableDatabase final : public Database {
  public:
    std::unique_ptr<Connection> open(std::string_view dsn) override;
};

}  // namespace tandril::platform
