#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tandril::test {

// More than 200 texts that try to get out of the SQL literal that they are put into. All of them
// can stand in an XML document.
inline std::vector<std::string> hostileValues() {
    const std::vector<std::string> starts = {"",    "'",    "''", "'''",  "''''", "x",
                                             "\\'", "\\''", "\"", "x\"'", "’",    "%27"};
    const std::vector<std::string> attacks = {"",
                                              "; DROP TABLE UNITS; --",
                                              ";DELETE FROM UNITS;",
                                              " OR 1=1 --",
                                              " or ''1''=''1",
                                              " or '1'='1",
                                              "); DELETE FROM UNITS; --",
                                              " UNION SELECT * FROM TASKS --",
                                              ", DSCA = ''x",
                                              "\n; DELETE FROM UNITS\n--",
                                              "/*",
                                              "*/ /* ",
                                              "{call x} ? :a @b $c",
                                              "`]\\%_"};
    const std::vector<std::string> ends = {"", "'", "''", "\\"};
    std::vector<std::string> values;
    for (const std::string& start : starts) {
        for (const std::string& attack : attacks) {
            for (const std::string& end : ends) values.push_back(start + attack + end);
        }
    }
    return values;
}

// What SQL reads from the value between apostrophes; nothing when the literal would end before it.
inline std::optional<std::string> readAsLiteral(const std::string& value) {
    std::string text;
    for (std::size_t position = 0; position < value.size(); ++position) {
        if (value[position] == '\'') {
            ++position;
            if (position == value.size() || value[position] != '\'') return std::nullopt;
        }
        text += value[position];
    }
    return text;
}

// As content of an element or of an attribute in double quotes. Line ends are references, so that
// attributes keep them.
inline std::string escaped(const std::string& value) {
    std::string text;
    for (const char c : value) {
        switch (c) {
            case '&':
                text += "&amp;";
                break;
            case '<':
                text += "&lt;";
                break;
            case '"':
                text += "&quot;";
                break;
            case '\n':
                text += "&#10;";
                break;
            default:
                text += c;
        }
    }
    return text;
}

}  // namespace tandril::test
