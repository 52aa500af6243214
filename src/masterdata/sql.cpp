#include "masterdata/sql.h"

#include <algorithm>

#include "platform/fault.h"

namespace tandril::masterdata {
namespace {

constexpr std::size_t shownLength = 100;

[[noreturn]] void refuse(const char* reason, std::string_view text) {
    std::string message = "invalid statement: ";
    message += reason;
    message += " in ";
    message += text.substr(0, shownLength);
    throw Fault(message);
}

bool areApostrophesDoubled(std::string_view value) {
    std::size_t position = 0;
    while ((position = value.find('\'', position)) != std::string_view::npos) {
        if (!value.substr(position + 1).starts_with('\'')) {
            return false;
        }
        position += 2;
    }
    return true;
}

bool isNameCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80U;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

void appendLiteral(std::string& sql, std::string_view value) {
    if (!areApostrophesDoubled(value)) {
        refuse("apostrophe", value);
    }
    if (value.find('\0') != std::string_view::npos) {
        refuse("zero character", value.substr(0, value.find('\0')));
    }
    sql += '\'';
    sql += value;
    sql += '\'';
}

void appendColumn(std::string& sql, std::string_view name) {
    if (name.empty() || isDigit(name.front()) ||
        !std::all_of(name.begin(), name.end(), isNameCharacter)) {
        refuse("name of a column", name);
    }
    sql += name;
}

std::string selectAll(std::string_view table) {
    std::string sql("SELECT * FROM ");
    sql += table;
    return sql;
}

}  // namespace tandril::masterdata
