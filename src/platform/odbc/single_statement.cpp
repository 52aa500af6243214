#include "platform/odbc/single_statement.h"

#include <string>

#include "platform/fault.h"

namespace tandril::platform::odbc {
namespace {

constexpr std::size_t shownLength = 200;

[[noreturn]] void refuse(const char* reason, std::string_view sql) {
    throw Fault(std::string("invalid statement, ") + reason + ": " + std::string(shown(sql)));
}

}  // namespace

std::string_view shown(std::string_view sql) {
    std::size_t length = sql.size();
    if (length > shownLength) {
        length = shownLength;
        // Never within a character.
        while ((static_cast<unsigned char>(sql[length]) & 0xC0U) == 0x80U) {
            --length;
        }
    }
    return sql.substr(0, length);
}

void requireSingleStatement(std::string_view sql) {
    if (sql.find('\0') != std::string_view::npos) {
        refuse("zero character", sql);
    }
    std::size_t position = 0;
    while ((position = sql.find_first_of("'\";", position)) != std::string_view::npos) {
        if (sql[position] == ';') {
            if (sql.find_first_not_of("; \t\r\n", position) != std::string_view::npos) {
                refuse("more than one", sql);
            }
            return;
        }
        // A doubled quote closes the literal and opens the next one, which comes to the same.
        position = sql.find(sql[position], position + 1);
        if (position == std::string_view::npos) {
            refuse("unclosed literal", sql);
        }
        ++position;
    }
}

}  // namespace tandril::platform::odbc
