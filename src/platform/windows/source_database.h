#pragma once

#include "platform/database.h"

namespace tandril::platform {

// The data sources that the ODBC administrator of Windows knows.
class SourceDatabase final : public Database {
  public:
    std::unique_ptr<Connection> open(std::string_view dsn) override;
};

}  // namespace tandril::platform
