#include "forms/cost_line_row.h"

#include <gtest/gtest.h>

#include "forms/one_field.h"

namespace tandril::test {
namespace {

using forms::costLineRow;
using store::Section;

std::string attributes(std::string_view dataType, bool hasZoom) {
    return "LABEL='Label' DATATYPE='" + std::string(dataType) + "'" + flag("ZOOM", hasZoom);
}

std::string rowAround(std::string_view cell) {
    return "<tr><td nowrap>&nbsp;Label</td>" + std::string(cell) + "</td></tr>";
}

struct TypeCase {
    const char* dataType;
    const char* value;
    const char* input;
    const char* text;
};

constexpr TypeCase typeCases[] = {
    {"s", "V", "<td>&nbsp;<input type=text size=10 id=\"StartDate\" value=\"V\">", "<td>V"},
    {"s", "", "<td>&nbsp;<input type=text size=10 id=\"StartDate\" value=\"\">", "<td>"},
    {"e", "V", "<td>&nbsp;<input type=text size=10 id=\"StartDate\" value=\"V\">", "<td>V"},
    {"t", "V", "<td>&nbsp;<input type=text size=10 id=\"StartDate\" value=\"V\">", "<td>V"},
    {"u", "20261115 103059",
     "<td>&nbsp;<input type=text size=10 id=\"StartDate\" value=\"11/15/2026\">"
     "<small><i>mmddyyyy</i></small><input type=text size=4 id=\"StartDate_time\" value=\"1030\">"
     "<small><i>hhmm</i></small>",
     "<td>&nbsp;11/15/2026&nbsp;&nbsp<small><i>mmddyyyy</i></small>&nbsp;1030"
     "&nbsp;&nbsp<small><i>hhmm</i></small>&nbsp;"},
    {"u", "20261115",
     "<td>&nbsp;<input type=text size=10 id=\"StartDate\" value=\"11/15/2026\">"
     "<small><i>mmddyyyy</i></small><input type=text size=4 id=\"StartDate_time\" value=\"\">"
     "<small><i>hhmm</i></small>",
     "<td>&nbsp;11/15/2026&nbsp;&nbsp<small><i>mmddyyyy</i></small>&nbsp;"
     "&nbsp;&nbsp<small><i>hhmm</i></small>&nbsp;"},
    {"u", "",
     "<td>&nbsp;<input type=text size=10 id=\"StartDate\"><small><i>mmddyyyy</i></small>"
     "<input type=text size=4 id=\"StartDate_time\"><small><i>hhmm</i></small>",
     "<td>"},
};

class CostLineRowOfType : public testing::TestWithParam<TypeCase> {};

TEST_P(CostLineRowOfType, OffersAnInputInAnEditableRecord) {
    const TypeCase& type = GetParam();
    const OneField field(Section::Labour, "StartDate", attributes(type.dataType, false));
    EXPECT_EQ(costLineRow(field.withValue(type.value), true), rowAround(type.input));
}

TEST_P(CostLineRowOfType, ZoomFollowsTheInput) {
    const TypeCase& type = GetParam();
    const OneField field(Section::Labour, "StartDate", attributes(type.dataType, true));
    EXPECT_EQ(costLineRow(field.withValue(type.value), true),
              rowAround(std::string(type.input) +
                        "<span class=links onclick=javascript:zoom(\"StartDate\",\"order_A1\")>"
                        "<small><strong>...</strong></small></span>"));
}

TEST_P(CostLineRowOfType, ShowsATextInARecordThatIsNotEditable) {
    const TypeCase& type = GetParam();
    for (const bool hasZoom : {false, true}) {
        const OneField field(Section::Labour, "StartDate", attributes(type.dataType, hasZoom));
        EXPECT_EQ(costLineRow(field.withValue(type.value), false), rowAround(type.text));
    }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, CostLineRowOfType, testing::ValuesIn(typeCases));

TEST(CostLineRow, ShowsItsFieldsWhateverTheMapperSaysOfThem) {
    for (const std::string name :
         {"CostComponent", "Task", "HourlyLaborType", "StartDate", "EndDate"}) {
        const OneField field(Section::Other, name,
                             "LABEL='Label' DATATYPE='s' UINTERFACE='0' MODIFIABLE='False' "
                             "HYPERLINK='True' NEW='False'");
        EXPECT_EQ(costLineRow(field.withValue("V"), true),
                  rowAround("<td>&nbsp;<input type=text size=10 id=\"" + name + "\" value=\"V\">"));
    }
}

TEST(CostLineRow, OtherFieldsHaveNoRow) {
    for (const std::string name : {"Item", "Description", "startdate", "OrderDate"}) {
        const OneField field(Section::Other, name, attributes("s", true));
        EXPECT_EQ(costLineRow(field.withValue("V"), true), "");
        EXPECT_FALSE(forms::isCostLineField(name));
    }
}

}  // namespace
}  // namespace tandril::test
