#include <algorithm>
#include <array>
#include <cstring>

#include "platform/odbc/text_calls.h"

namespace tandril::platform::odbc {
namespace {

// The functions take their input as pointers to plain characters and do not change it.
SQLCHAR* input(std::string_view text) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.data()));
}

SQLCHAR* output(char* buffer) {
    return reinterpret_cast<SQLCHAR*>(buffer);
}

constexpr std::size_t firstPiece = 1024;
constexpr std::size_t largestPiece = 1U << 20U;

}  // namespace

SQLRETURN connect(SQLHDBC connection, std::string_view connectionString) {
    return SQLDriverConnect(connection, nullptr, input(connectionString),
                            static_cast<SQLSMALLINT>(connectionString.size()), nullptr, 0, nullptr,
                            SQL_DRIVER_NOPROMPT);
}

SQLRETURN executeDirect(SQLHSTMT statement, std::string_view sql) {
    return SQLExecDirect(statement, input(sql), static_cast<SQLINTEGER>(sql.size()));
}

SQLRETURN columnName(SQLHSTMT statement, SQLUSMALLINT column, std::string& name) {
    std::array<char, firstPiece> buffer{};
    SQLSMALLINT length = 0;
    const SQLRETURN result = SQLDescribeCol(statement, column, output(buffer.data()),
                                            static_cast<SQLSMALLINT>(buffer.size()), &length,
                                            nullptr, nullptr, nullptr, nullptr);
    name.assign(buffer.data(), strnlen(buffer.data(), buffer.size()));
    return result;
}

SQLRETURN columnText(SQLHSTMT statement, SQLUSMALLINT column, std::string& text) {
    text.clear();
    std::size_t piece = firstPiece;
    while (true) {
        const std::size_t before = text.size();
        text.resize(before + piece);
        SQLLEN length = 0;
        const SQLRETURN result = SQLGetData(statement, column, SQL_C_CHAR, text.data() + before,
                                            static_cast<SQLLEN>(piece), &length);
        if (!SQL_SUCCEEDED(result) || length == SQL_NULL_DATA) {
            text.resize(before);
            // A value that filled its last piece exactly ends with an empty one.
            return result == SQL_NO_DATA ? SQLRETURN{SQL_SUCCESS} : result;
        }
        // A piece that is not the last one fills its buffer up to the closing zero; how much is
        // left to read is told in different ways by different drivers, and not needed.
        const bool isLast =
            result == SQL_SUCCESS || (length >= 0 && static_cast<std::size_t>(length) < piece);
        text.resize(before + (isLast ? static_cast<std::size_t>(length)
                                     : strnlen(text.data() + before, piece)));
        if (isLast) {
            return SQL_SUCCESS;
        }
        piece = std::min(piece * 2, largestPiece);
    }
}

SQLRETURN diagnostic(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT record, Diagnostic& result) {
    std::array<char, SQL_SQLSTATE_SIZE + 1> state{};
    std::array<char, SQL_MAX_MESSAGE_LENGTH> message{};
    SQLSMALLINT length = 0;
    const SQLRETURN returned =
        SQLGetDiagRec(type, handle, record, output(state.data()), &result.native,
                      output(message.data()), static_cast<SQLSMALLINT>(message.size()), &length);
    result.state.assign(state.data(), strnlen(state.data(), state.size()));
    result.message.assign(message.data(), strnlen(message.data(), message.size()));
    return returned;
}

}  // namespace tandril::platform::odbc
