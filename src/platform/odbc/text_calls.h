#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <string_view>

// The ODBC functions that carry text, in UTF-8. There is one source file for drivers that take
// UTF-8 in the plain functions, as those of unixODBC do, and one for UTF-16; the build picks it.
// Each returns what the ODBC function returned.
namespace tandril::platform::odbc {

SQLRETURN connect(SQLHDBC connection, std::string_view connectionString);

// Prepares and runs the statement.
SQLRETURN executeDirect(SQLHSTMT statement, std::string_view sql);

// The name of a column of the result, counted from 1.
SQLRETURN columnName(SQLHSTMT statement, SQLUSMALLINT column, std::string& name);

// The value of a column of the current record as text of any length, NULL as "".
SQLRETURN columnText(SQLHSTMT statement, SQLUSMALLINT column, std::string& text);

struct Diagnostic {
    std::string state;  // SQLSTATE, five characters; some drivers leave it empty
    SQLINTEGER native = 0;
    std::string message;
};

// The diagnostic record of that number, counted from 1.
SQLRETURN diagnostic(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT record, Diagnostic& result);

}  // namespace tandril::platform::odbc
