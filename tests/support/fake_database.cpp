#include "support/fake_database.h"

#include "platform/fault.h"

namespace tandril::test {

class FakeDatabase::FakeConnection : public platform::Connection {
  public:
    explicit FakeConnection(FakeDatabase& database) : database_(database) {
        ++database_.openConnections;
    }
    ~FakeConnection() override { --database_.openConnections; }
    FakeConnection(const FakeConnection&) = delete;
    FakeConnection& operator=(const FakeConnection&) = delete;

    void query(std::string_view sql,
               const std::function<void(const std::vector<std::string>&)>& columns,
               const std::function<bool(const std::vector<std::string>&)>& row) override {
        database_.record(sql);
        const auto found = database_.answers_.find(sql);
        if (found == database_.answers_.end()) {
            throw Fault("the test has no answer to: " + std::string(sql));
        }
        columns(found->second.columns);
        for (const auto& record : found->second.records) {
            if (!row(record)) break;
        }
    }

    void execute(std::string_view sql) override { database_.record(sql); }
    void begin() override { database_.record("BEGIN"); }
    void commit() override { database_.record("COMMIT"); }
    void rollback() override { database_.record("ROLLBACK"); }

  private:
    FakeDatabase& database_;
};

std::unique_ptr<platform::Connection> FakeDatabase::open(std::string_view dsn) {
    opened.emplace_back(dsn);
    if (!openFailure_.empty()) throw Fault(openFailure_);
    return std::make_unique<FakeConnection>(*this);
}

void FakeDatabase::record(std::string_view sql) {
    statements.emplace_back(sql);
    for (const auto& [start, text] : failures_) {
        if (sql.starts_with(start)) throw Fault(text);
    }
}

}  // namespace tandril::test
