#include "platform/home/whole_table_select.h"

#include <gmock/gmock.h>

namespace tandril::test {
namespace {

using platform::parseWholeTableSelect;
using platform::WholeTableSelect;

// "table|column=value|..." or "no".
std::string parsed(std::string_view sql) {
    const auto select = parseWholeTableSelect(sql);
    if (!select) return "no";
    std::string text = select->table;
    for (const auto& [column, value] : select->conditions) text += "|" + column + "=" + value;
    return text;
}

struct Case {
    std::string_view sql;
    std::string_view expected;
};

class WholeTableSelectCase : public ::testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(
    Statements, WholeTableSelectCase,
    ::testing::Values(
        Case{"SELECT * FROM UNITS", "UNITS"}, Case{" select\t*\nfrom A_1 ", "A_1"},
        Case{"SELECT * FROM T WHERE A = 'x'", "T|A=x"},
        Case{"select * from T where A ='x' AND B= 'y' and C='z'", "T|A=x|B=y|C=z"},
        Case{"select * from T where A = ''", "T|A="},
        Case{"select * from T where A = 'it''s ''''' and B = '--'", "T|A=it's ''|B=--"},
        Case{"select * from T where A = 'x", "no"}, Case{"select * from T where A = 'x''", "no"},
        Case{"select * from T where A = 'x' or B = 'y'", "no"},
        Case{"select * from T where A = 'x'; drop table T", "no"},
        Case{"select * from T where A = 'x' --", "no"}, Case{"select * from T where", "no"},
        Case{"select * from T where A <> 'x'", "no"}, Case{"select * from T where A = B", "no"},
        Case{"select * from T, U", "no"}, Case{"select A from T", "no"},
        Case{"select * from", "no"}, Case{"delete from T", "no"}, Case{"", "no"}));

TEST_P(WholeTableSelectCase, IsReadOrRefused) {
    EXPECT_EQ(parsed(GetParam().sql), GetParam().expected) << GetParam().sql;
}

}  // namespace
}  // namespace tandril::test
