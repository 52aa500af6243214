#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "platform/odbc/handles.h"

namespace tandril::platform::odbc {

// A connection to whatever an ODBC connection string names. Faults carry SQLSTATE, message and
// native error number of every diagnostic record.
//
// Only single, complete statements are sent: a text with a second statement behind a semicolon, an
// unclosed literal or a zero character is a fault before the driver sees it, so that no driver has
// the choice of what to make of it.
class OdbcConnection final : public Connection {
  public:
    explicit OdbcConnection(const std::string& connectionString);

    void query(std::string_view sql,
               const std::function<void(const std::vector<std::string>&)>& columns,
               const std::function<bool(const std::vector<std::string>&)>& row) override;
    void execute(std::string_view sql) override;
    void begin() override;
    void commit() override;
    void rollback() override;

  private:
    void setAutocommit(bool on);
    void end(SQLSMALLINT completion, const char* what);

    Session session_;
    Statement statement_;  // serves one execute() after the other
    bool hasTransactions_ = false;
};

}  // namespace tandril::platform::odbc
