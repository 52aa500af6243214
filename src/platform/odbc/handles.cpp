#include "platform/odbc/handles.h"

#include <cstdint>

#include "platform/fault.h"
#include "platform/odbc/text_calls.h"

namespace tandril::platform::odbc {
namespace {

// Without blanks and line ends at its end; some drivers close their messages with them.
std::string trimmed(const std::string& text) {
    return text.substr(0, text.find_last_not_of(" \r\n") + 1);
}

std::string describe(const Diagnostic& record) {
    std::string text;
    if (!record.state.empty()) {
        text += "[" + record.state + "] ";
    }
    return text + trimmed(record.message) + " (" + std::to_string(record.native) + ")";
}

}  // namespace

void throwFault(const std::string& what, SQLSMALLINT type, SQLHANDLE handle) {
    std::string message = what;
    Diagnostic record;
    const char* separator = ": ";
    for (SQLSMALLINT number = 1; SQL_SUCCEEDED(diagnostic(type, handle, number, record));
         ++number) {
        message += separator + describe(record);
        separator = "; ";
    }
    throw Fault(message);
}

Session::Environment::Environment() {
    // The application must say which version it speaks before it connects.
    // ODBC passes numbers as pointers. NOLINTNEXTLINE(performance-no-int-to-ptr)
    const auto version = reinterpret_cast<SQLPOINTER>(static_cast<std::uintptr_t>(SQL_OV_ODBC3));
    SQLSetEnvAttr(handle.get(), SQL_ATTR_ODBC_VERSION, version, 0);
}

Session::Session(const std::string& connectionString) : connection_(environment_.handle.get()) {
    if (!SQL_SUCCEEDED(connect(connection_.get(), connectionString))) {
        throwFault("cannot connect", SQL_HANDLE_DBC, connection_.get());
    }
}

Session::~Session() {
    // Work that was not committed is given up; a connection with open work does not disconnect.
    SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK);
    SQLDisconnect(connection_.get());
}

}  // namespace tandril::platform::odbc
