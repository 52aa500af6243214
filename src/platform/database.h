#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tandril::platform {

// An open connection to a data source. Closed when destroyed. Not safe for concurrent use.
// Every function throws Fault when the database refuses.
class Connection {
  public:
    virtual ~Connection() = default;

    // Runs a query. `columns` is called once with the names as the database gives them, then `row`
    // for each record with its values as UTF-8 text of any length, NULL as ""; `row` returns false
    // to stop early.
    virtual void query(std::string_view sql,
                       const std::function<void(const std::vector<std::string>&)>& columns,
                       const std::function<bool(const std::vector<std::string>&)>& row) = 0;

    // Runs a statement that returns no records.
    virtual void execute(std::string_view sql) = 0;

    // Groups the statements up to commit() or rollback(). Where the database has no transactions
    // each statement stands alone and these do nothing.
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
};

// Data sources by name.
class Database {
  public:
    virtual ~Database() = default;

    // Opens the data source `dsn` ("Tandril Master Data") with empty user and password.
    virtual std::unique_ptr<Connection> open(std::string_view dsn) = 0;
};

}  // namespace tandril::platform
