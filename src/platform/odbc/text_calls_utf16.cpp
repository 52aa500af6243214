#include <algorithm>
#include <array>
#include <vector>

#include "platform/odbc/text_calls.h"
#include "platform/windows/wide.h"

// Here the functions count in UTF-16 units, but the lengths of values in bytes.
namespace tandril::platform::odbc {
namespace {

// The functions take their input as pointers to plain characters and do not change it.
SQLWCHAR* input(std::wstring& text) {
    return text.data();
}

std::string textIn(const std::vector<SQLWCHAR>& buffer) {
    return toUtf8({buffer.begin(), std::find(buffer.begin(), buffer.end(), L'\0')});
}

constexpr std::size_t firstPiece = 1024;
constexpr std::size_t largestPiece = 1U << 20U;

}  // namespace

SQLRETURN connect(SQLHDBC connection, std::string_view connectionString) {
    std::wstring wide = toWide(connectionString);
    // Under Wine a length in units would be taken for one in bytes of UTF-8, and cut the end off.
    return SQLDriverConnectW(connection, nullptr, input(wide), SQL_NTS, nullptr, 0, nullptr,
                             SQL_DRIVER_NOPROMPT);
}

SQLRETURN executeDirect(SQLHSTMT statement, std::string_view sql) {
    std::wstring wide = toWide(sql);
    return SQLExecDirectW(statement, input(wide), static_cast<SQLINTEGER>(wide.size()));
}

SQLRETURN columnName(SQLHSTMT statement, SQLUSMALLINT column, std::string& name) {
    std::vector<SQLWCHAR> buffer(firstPiece);
    SQLSMALLINT length = 0;
    const SQLRETURN result =
        SQLDescribeColW(statement, column, buffer.data(), static_cast<SQLSMALLINT>(buffer.size()),
                        &length, nullptr, nullptr, nullptr, nullptr);
    name = textIn(buffer);
    return result;
}

SQLRETURN columnText(SQLHSTMT statement, SQLUSMALLINT column, std::string& text) {
    text.clear();
    std::wstring wide;
    std::size_t piece = firstPiece;
    while (true) {
        const std::size_t before = wide.size();
        wide.resize(before + piece);
        SQLLEN size = 0;
        const SQLRETURN result = SQLGetData(statement, column, SQL_C_WCHAR, wide.data() + before,
                                            static_cast<SQLLEN>(piece * sizeof(SQLWCHAR)), &size);
        if (!SQL_SUCCEEDED(result) || size == SQL_NULL_DATA) {
            wide.resize(before);
            text = toUtf8(wide);
            // A value that filled its last piece exactly ends with an empty one.
            return result == SQL_NO_DATA ? SQL_SUCCESS : result;
        }
        // Drivers differ in how they tell what is left to read; the closing zero is always there.
        const auto begin = wide.begin() + static_cast<std::ptrdiff_t>(before);
        wide.erase(std::find(begin, wide.end(), L'\0'), wide.end());
        if (result == SQL_SUCCESS) {
            text = toUtf8(wide);
            return SQL_SUCCESS;
        }
        piece = std::min(piece * 2, largestPiece);
    }
}

SQLRETURN diagnostic(SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT record, Diagnostic& result) {
    std::vector<SQLWCHAR> state(SQL_SQLSTATE_SIZE + 1);
    std::vector<SQLWCHAR> message(SQL_MAX_MESSAGE_LENGTH);
    SQLSMALLINT length = 0;
    const SQLRETURN returned =
        SQLGetDiagRecW(type, handle, record, state.data(), &result.native, message.data(),
                       static_cast<SQLSMALLINT>(message.size()), &length);
    result.state = textIn(state);
    result.message = textIn(message);
    return returned;
}

}  // namespace tandril::platform::odbc
