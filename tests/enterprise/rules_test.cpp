// The rules for single records, one row per case.

#include "enterprise/rules.h"

#include <gtest/gtest.h>

#include "enterprise/memory.h"
#include "enterprise/numbers.h"
#include "enterprise/sample_folder.h"

namespace tandril::enterprise {
namespace {

struct Case {
    Kind kind;
    std::string fields;
    std::string refusal;  // in English; "" when the record is in order
};

std::ostream& operator<<(std::ostream& out, const Case& c) {
    return out << c.fields;
}

class RuleOfTheOffice : public testing::TestWithParam<Case> {};

TEST_P(RuleOfTheOffice, DecidesByTheFields) {
    const SampleFolder samples(TANDRIL_SAMPLES_DIR);
    const Memory memory;
    pugi::xml_document document;
    document.load_string(("<record>" + GetParam().fields + "</record>").c_str());
    const OrderBook book(memory.book());
    const auto refusal =
        Rules(samples.masterTables(), book).check(GetParam().kind, document.first_child(), {});
    EXPECT_EQ(refusal ? describe(*refusal, Language::English) : "", GetParam().refusal);
}

const std::string hoursRefusal = "The hours must be a number above 0 and up to 24, not ";
const std::string quantityRefusal = "The quantity must be a number above 0, not ";

INSTANTIATE_TEST_SUITE_P(
    Records, RuleOfTheOffice,
    testing::Values(
        Case{Kind::Order, "", ""}, Case{Kind::Order, "<Configuration>C-100</Configuration>", ""},
        Case{Kind::Order, "<Configuration>c-100</Configuration>",
             "There is no configuration \"c-100\"."},
        Case{Kind::Activity,
             "<ExecutionStartTime>20261113 100000</ExecutionStartTime>"
             "<ExecutionFinishTime>20261113 100000</ExecutionFinishTime>",
             ""},
        Case{Kind::Activity,
             "<ExecutionStartTime>20261113 100000</ExecutionStartTime>"
             "<ExecutionFinishTime>20261112 110000</ExecutionFinishTime>",
             "The work ends before it begins."},
        Case{Kind::Activity, "<ExecutionStartTime>20261113 100000</ExecutionStartTime>", ""},
        Case{Kind::Material, "<Item>FLT-400</Item><Quantity>0,5</Quantity>", ""},
        Case{Kind::Material, "<Item>FLT-3OO</Item>", "There is no item \"FLT-3OO\"."},
        Case{Kind::Material, "<Quantity>0</Quantity>", quantityRefusal + "\"0\"."},
        Case{Kind::Material, "<Quantity>two</Quantity>", quantityRefusal + "\"two\"."},
        Case{Kind::Labour, "<Hours>24</Hours>", ""},
        Case{Kind::Labour, "<Hours>24.01</Hours>", hoursRefusal + "\"24.01\"."},
        Case{Kind::Labour, "<Hours>-1</Hours>", hoursRefusal + "\"-1\"."},
        Case{Kind::Labour, "<Hours>1h</Hours>", hoursRefusal + "\"1h\"."},
        Case{Kind::Labour,
             "<StartDate>20261113 100000</StartDate><EndDate>20261113 095959</EndDate>",
             "The work ends before it begins."},
        Case{Kind::Other, "<Amount>5000</Amount>", ""}, Case{Kind::Other, "<Amount>0</Amount>", ""},
        Case{Kind::Other, "<Amount>5000,01</Amount>",
             "Amounts above 5000 need an approval first: \"5000,01\"."},
        Case{Kind::Other, "<Amount>-1</Amount>",
             "The amount must be a number from 0 on, not \"-1\"."},
        Case{Kind::Other, "<Amount>free</Amount>",
             "The amount must be a number from 0 on, not \"free\"."}));

TEST(NumberOfAnEngineer, HasAPointOrACommaAndNothingElse) {
    EXPECT_EQ(parseNumber("1.5"), 1.5);
    EXPECT_EQ(parseNumber("1,5"), 1.5);
    EXPECT_EQ(parseNumber("-2"), -2);
    for (const char* text : {"", " ", "1 ", "1.000,5", "1e3", "inf", "nan", "0x10", "--1"}) {
        EXPECT_EQ(parseNumber(text), std::nullopt) << text;
    }
}

TEST(NumberOfAnEngineer, IsWrittenWithoutTrailingZeros) {
    EXPECT_EQ(formatNumber(26.5), "26.5");
    EXPECT_EQ(formatNumber(30), "30");
    EXPECT_EQ(formatNumber(25.333333), "25.33");
}

}  // namespace
}  // namespace tandril::enterprise
