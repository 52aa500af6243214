#pragma once

#include <memory>
#include <string>

#include "platform/database.h"

namespace tandril::platform {

// A Microsoft Access file that is read through MDB Tools.
//
// That driver takes no doubled apostrophe, no long literal and no unknown column for what they are:
// it fails, or answers with wrong records. So it is asked for whole tables only, and conditions are
// applied to its records here. Texts compare exactly; an empty text matches nothing, as Access
// stores it as NULL. Queries of any other shape than WholeTableSelect, and everything that writes,
// are faults.
class AccessConnection final : public Connection {
  public:
    // `tables` is a connection to the file through the driver; `shown` is how the user knows the
    // file.
    AccessConnection(std::unique_ptr<Connection> tables, std::string shown)
        : tables_(std::move(tables)), shown_(std::move(shown)) {}

    void query(std::string_view sql,
               const std::function<void(const std::vector<std::string>&)>& columns,
               const std::function<bool(const std::vector<std::string>&)>& row) override;
    void execute(std::string_view sql) override;
    void begin() override {}
    void commit() override {}
    void rollback() override {}

  private:
    std::unique_ptr<Connection> tables_;
    std::string shown_;
};

}  // namespace tandril::platform
