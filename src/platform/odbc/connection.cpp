#include "platform/odbc/connection.h"

#include <cstdint>

#include "platform/fault.h"
#include "platform/odbc/handles.h"
#include "platform/odbc/single_statement.h"
#include "platform/odbc/text_calls.h"

namespace tandril::platform::odbc {
namespace {

bool supportsTransactions(SQLHDBC connection) {
    SQLUSMALLINT capability = SQL_TC_NONE;
    return SQL_SUCCEEDED(
               SQLGetInfo(connection, SQL_TXN_CAPABLE, &capability, sizeof capability, nullptr)) &&
           capability != SQL_TC_NONE;
}

// Makes the statement ready to serve again.
class CursorCloser {
  public:
    explicit CursorCloser(SQLHSTMT statement) : statement_(statement) {}
    ~CursorCloser() { SQLFreeStmt(statement_, SQL_CLOSE); }
    CursorCloser(const CursorCloser&) = delete;
    CursorCloser& operator=(const CursorCloser&) = delete;

  private:
    SQLHSTMT statement_;
};

void requireSuccess(SQLRETURN result, const char* what, SQLHSTMT statement) {
    if (!SQL_SUCCEEDED(result)) {
        throwFault(what, SQL_HANDLE_STMT, statement);
    }
}

void run(SQLHSTMT statement, std::string_view sql) {
    requireSingleStatement(sql);
    const SQLRETURN result = executeDirect(statement, sql);
    // An update or a deletion that found nothing has "no data", and is as good.
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) {
        throwFault("cannot run " + std::string(shown(sql)), SQL_HANDLE_STMT, statement);
    }
}

std::vector<std::string> columnNames(SQLHSTMT statement) {
    SQLSMALLINT count = 0;
    requireSuccess(SQLNumResultCols(statement, &count), "cannot read the columns", statement);
    std::vector<std::string> names(static_cast<std::size_t>(count));
    SQLUSMALLINT column = 0;
    for (std::string& name : names) {
        requireSuccess(columnName(statement, ++column, name), "cannot read a column's name",
                       statement);
    }
    return names;
}

// Reads the values of the next record; false behind the last one.
bool fetch(SQLHSTMT statement, std::vector<std::string>& values) {
    const SQLRETURN result = SQLFetch(statement);
    if (result == SQL_NO_DATA) {
        return false;
    }
    requireSuccess(result, "cannot read a record", statement);
    SQLUSMALLINT column = 0;
    for (std::string& value : values) {
        requireSuccess(columnText(statement, ++column, value), "cannot read a value", statement);
    }
    return true;
}

}  // namespace

struct OdbcConnection::Handles {
    explicit Handles(const std::string& connectionString) : session(connectionString) {}

    Session session;
    Statement statement{session.get()};  // serves one execute() after the other
};

OdbcConnection::OdbcConnection(const std::string& connectionString)
    : handles_(std::make_unique<Handles>(connectionString)),
      hasTransactions_(supportsTransactions(handles_->session.get())) {}

OdbcConnection::~OdbcConnection() = default;

void OdbcConnection::query(std::string_view sql,
                           const std::function<void(const std::vector<std::string>&)>& columns,
                           const std::function<bool(const std::vector<std::string>&)>& row) {
    // A statement of its own: some drivers give up the locks of a cursor that was not read to its
    // end only with the statement.
    const Statement statement(handles_->session.get());
    run(statement.get(), sql);
    std::vector<std::string> values = columnNames(statement.get());
    columns(values);
    if (values.empty()) {
        return;  // a statement that has no result
    }
    while (fetch(statement.get(), values) && row(values)) {
    }
}

void OdbcConnection::execute(std::string_view sql) {
    const CursorCloser closer(handles_->statement.get());
    run(handles_->statement.get(), sql);
}

void OdbcConnection::begin() {
    setAutocommit(false);
}

void OdbcConnection::commit() {
    end(SQL_COMMIT, "cannot commit");
}

void OdbcConnection::rollback() {
    end(SQL_ROLLBACK, "cannot roll back");
}

void OdbcConnection::end(short completion, const char* what) {
    if (!hasTransactions_) {
        return;
    }
    if (!SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, handles_->session.get(), completion))) {
        throwFault(what, SQL_HANDLE_DBC, handles_->session.get());
    }
    setAutocommit(true);
}

void OdbcConnection::setAutocommit(bool on) {
    if (!hasTransactions_) {
        return;
    }
    const std::uintptr_t mode = on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
    // ODBC passes numbers as pointers. NOLINTNEXTLINE(performance-no-int-to-ptr)
    const auto attribute = reinterpret_cast<SQLPOINTER>(mode);
    if (!SQL_SUCCEEDED(
            SQLSetConnectAttr(handles_->session.get(), SQL_ATTR_AUTOCOMMIT, attribute, 0))) {
        throwFault("cannot change the transaction mode", SQL_HANDLE_DBC, handles_->session.get());
    }
}

}  // namespace tandril::platform::odbc
