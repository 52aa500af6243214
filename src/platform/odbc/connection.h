#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

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
    ~OdbcConnection() override;
    OdbcConnection(const OdbcConnection&) = delete;
    OdbcConnection& operator=(const OdbcConnection&) = delete;

    void query(std::string_view sql,
               const std::function<void(const std::vector<std::string>&)>& columns,
               const std::function<bool(const std::vector<std::string>&)>& row) override;
    void execute(std::string_view sql) override;
    void begin() override;
    void commit() override;
    void rollback() override;

  private:
    void setAutocommit(bool on);
    void end(short completion, const char* what);

    // Behind it are the headers of ODBC, which on Windows drag all of that system's along.
    struct Handles;
    std::unique_ptr<Handles> handles_;
    bool hasTransactions_ = false;
};

}  // namespace tandril::platform::odbc
