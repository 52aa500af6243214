#include "platform/home/whole_table_select.h"

#include "platform/ascii.h"

namespace tandril::platform {
namespace {

bool isNameCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

// Takes words and signs off the front of a statement.
class Scanner {
  public:
    explicit Scanner(std::string_view sql) : rest_(sql) { skipBlanks(); }

    bool atEnd() const { return rest_.empty(); }

    bool takeKeyword(std::string_view keyword) {
        if (foldAscii(leadingName()) != keyword) return false;
        drop(keyword.size());
        return true;
    }

    bool takeSign(char sign) {
        if (!rest_.starts_with(sign)) return false;
        drop(1);
        return true;
    }

    bool takeName(std::string& name) {
        name = leadingName();
        drop(name.size());
        return !name.empty();
    }

    bool takeLiteral(std::string& value) {
        if (!rest_.starts_with('\'')) return false;
        value.clear();
        for (std::size_t position = 1; position < rest_.size(); ++position) {
            if (rest_[position] == '\'') {
                const bool isDoubled = rest_.substr(position + 1).starts_with('\'');
                if (!isDoubled) {
                    drop(position + 1);
                    return true;
                }
                ++position;
            }
            value += rest_[position];
        }
        return false;
    }

  private:
    std::string_view leadingName() const {
        std::size_t length = 0;
        while (length < rest_.size() && isNameCharacter(rest_[length])) ++length;
        return rest_.substr(0, length);
    }

    void drop(std::size_t length) {
        rest_.remove_prefix(length);
        skipBlanks();
    }

    void skipBlanks() {
        const std::size_t length = rest_.find_first_not_of(" \t\r\n");
        rest_.remove_prefix(length == std::string_view::npos ? rest_.size() : length);
    }

    std::string_view rest_;
};

bool takeCondition(Scanner& scanner, WholeTableSelect& select) {
    WholeTableSelect::Condition condition;
    if (!scanner.takeName(condition.column) || !scanner.takeSign('=') ||
        !scanner.takeLiteral(condition.value)) {
        return false;
    }
    select.conditions.push_back(std::move(condition));
    return true;
}

}  // namespace

std::optional<WholeTableSelect> parseWholeTableSelect(std::string_view sql) {
    Scanner scanner(sql);
    WholeTableSelect select;
    if (!scanner.takeKeyword("select") || !scanner.takeSign('*') || !scanner.takeKeyword("from") ||
        !scanner.takeName(select.table)) {
        return std::nullopt;
    }
    if (scanner.takeKeyword("where")) {
        do {
            if (!takeCondition(scanner, select)) return std::nullopt;
        } while (scanner.takeKeyword("and"));
    }
    if (!scanner.atEnd()) return std::nullopt;
    return select;
}

}  // namespace tandril::platform
