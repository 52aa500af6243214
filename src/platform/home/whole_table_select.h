#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tandril::platform {

// A query for all columns of one table, with conditions that all must hold:
//     SELECT * FROM table [WHERE column = 'value' [AND column = 'value']...]
struct WholeTableSelect {
    struct Condition {
        std::string column;
        std::string value;  // without the quotes, doubled apostrophes made single
    };

    std::string table;
    std::vector<Condition> conditions;
};

// Nothing when the text is any other statement. Keywords are read in any case; names consist of
// ASCII letters, digits and underscores.
std::optional<WholeTableSelect> parseWholeTableSelect(std::string_view sql);

}  // namespace tandril::platform
