#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>

// Owners of ODBC handles. Each frees what it holds, in the order that ODBC asks for.
namespace tandril::platform::odbc {

// Throws the Fault `WHAT: [SQLSTATE] message (native error)` with every diagnostic record of the
// handle.
[[noreturn]] void throwFault(const std::string& what, SQLSMALLINT type, SQLHANDLE handle);

// A handle of one type.
template <SQLSMALLINT type>
class Handle {
  public:
    // `parent` is the connection of a statement, the environment of a connection, and no handle for
    // an environment.
    explicit Handle(SQLHANDLE parent) {
        if (!SQL_SUCCEEDED(SQLAllocHandle(type, parent, &handle_))) {
            constexpr SQLSMALLINT parentType =
                type == SQL_HANDLE_STMT ? SQL_HANDLE_DBC : SQL_HANDLE_ENV;
            throwFault("cannot allocate an ODBC handle", parentType, parent);
        }
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { SQLFreeHandle(type, handle_); }

    SQLHANDLE get() const { return handle_; }

  private:
    SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

using Statement = Handle<SQL_HANDLE_STMT>;

// An environment and a connection in it, open from construction to destruction.
class Session {
  public:
    // Throws Fault when the driver manager or the driver refuses.
    explicit Session(const std::string& connectionString);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    SQLHDBC get() const { return connection_.get(); }

  private:
    struct Environment {
        Environment();
        Handle<SQL_HANDLE_ENV> handle{SQL_NULL_HANDLE};
    };

    Environment environment_;
    Handle<SQL_HANDLE_DBC> connection_;
};

}  // namespace tandril::platform::odbc
