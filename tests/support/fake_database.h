#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace tandril::test {

// A database that answers the queries that a test has scripted, and any other with a fault. Every
// other statement succeeds unless it is scripted to fail. Outlives its connections.
class FakeDatabase : public platform::Database {
  public:
    struct Rows {
        std::vector<std::string> columns;
        std::vector<std::vector<std::string>> records;
    };

    std::unique_ptr<platform::Connection> open(std::string_view dsn) override;

    // From now on this query, letter for letter, has this answer.
    void answer(std::string sql, Rows rows) { answers_[std::move(sql)] = std::move(rows); }
    // From now on this statement, or every one that begins so, throws Fault with this text.
    void fail(std::string sqlStart, std::string text) {
        failures_[std::move(sqlStart)] = std::move(text);
    }
    // From now on opening throws Fault with this text; "" lets it succeed again.
    void failOpen(std::string text) { openFailure_ = std::move(text); }

    // What the connections were asked for, in order, transactions as "BEGIN", "COMMIT" and
    // "ROLLBACK"; those that failed included.
    std::vector<std::string> statements;
    // Names of the data sources that were opened.
    std::vector<std::string> opened;
    int openConnections = 0;

  private:
    class FakeConnection;
    void record(std::string_view sql);

    std::map<std::string, Rows, std::less<>> answers_;
    std::map<std::string, std::string> failures_;
    std::string openFailure_;
};

}  // namespace tandril::test
