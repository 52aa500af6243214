#include "masterdata/sql.h"

#include <gmock/gmock.h>

#include "platform/fault.h"

namespace tandril::test {
namespace {

std::string literal(std::string_view value) {
    std::string sql("A = ");
    masterdata::appendLiteral(sql, value);
    return sql;
}

std::string faultOf(std::string_view value) {
    try {
        literal(value);
    } catch (const Fault& fault) {
        return fault.what();
    }
    return "";
}

TEST(AppendLiteral, PutsTheValueBetweenApostrophesAsItIs) {
    EXPECT_EQ(literal(""), "A = ''");
    EXPECT_EQ(literal("Höhe \"5\" \\ % ; -- ?"), "A = 'Höhe \"5\" \\ % ; -- ?'");
    EXPECT_EQ(literal("it''s ''''"), "A = 'it''s '''''");
    EXPECT_EQ(literal("''"), "A = ''''");
}

TEST(AppendLiteral, RefusesSingleApostrophes) {
    for (const std::string_view value : {"'", "'''", "it's", "'' '", "' ''", "'x'", "x'''''"}) {
        EXPECT_EQ(faultOf(value), "invalid statement: apostrophe in " + std::string(value));
    }
}

TEST(AppendLiteral, RefusesZeroCharacters) {
    EXPECT_EQ(faultOf(std::string_view("a\0b", 3)), "invalid statement: zero character in a");
}

TEST(AppendLiteral, CutsLongValuesInTheMessage) {
    EXPECT_LT(faultOf("'" + std::string(1000, 'x')).size(), 200U);
}

TEST(AppendColumn, TakesPlainNames) {
    for (const std::string_view name : {"DSCA", "a_1", "_x", "Größe", "ORDER"}) {
        std::string sql;
        masterdata::appendColumn(sql, name);
        EXPECT_EQ(sql, name);
    }
}

TEST(AppendColumn, RefusesWhatSqlReadsInAnotherWay) {
    for (const std::string_view name :
         {"", "A--", "A-B", "A.B", "A:B", "1A", "A B", "A'", "A\"", "A;", "A=", "(A)", "A,B"}) {
        std::string sql;
        EXPECT_THROW(masterdata::appendColumn(sql, name), Fault) << name;
        EXPECT_EQ(sql, "");
    }
}

}  // namespace
}  // namespace tandril::test
