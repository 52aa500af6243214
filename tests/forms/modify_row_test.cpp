#include "forms/modify_row.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "forms/one_field.h"

namespace tandril::test {
namespace {

using forms::modifyRow;
using store::Section;

// The row behind the cell with the label.
std::string rowEnd(const OneField& field, std::string_view value, bool isEditable) {
    const std::string row = modifyRow(field.withValue(value), isEditable);
    const std::string opening = "<tr><td nowrap>&nbsp;Label</td>";
    EXPECT_TRUE(row.starts_with(opening)) << row;
    return row.substr(std::min(opening.size(), row.size()));
}

std::string attributes(std::string_view dataType, bool isModifiable, bool hasZoom,
                       bool hasHyperlink, std::string_view userInterface = "2") {
    return "LABEL='Label' DATATYPE='" + std::string(dataType) + "' UINTERFACE='" +
           std::string(userInterface) + "'" + flag("MODIFIABLE", isModifiable) +
           flag("ZOOM", hasZoom) + flag("HYPERLINK", hasHyperlink);
}

constexpr std::string_view entries = "<i Id='15' Value='Open'/><i Id='20' Value='Done'/>";

const std::string zoom =
    "<span class=links onclick=javascript:zoom(\"Field\",\"order_A1\")>"
    "<small><strong>...</strong></small></span>";

// What one data type shows of one value: the input in a record that may be edited, the text in one
// that may not, and the row's end behind the input.
struct TypeCase {
    const char* dataType;
    const char* value;
    const char* input;
    const char* text;
    const char* hyperlink;
};

constexpr TypeCase typeCases[] = {
    {"s", "V", "<td>&nbsp;<input type=text size=10 id=Field value=\"V\">",
     "<td id=Field>&nbsp;V</td></tr>",
     "<td>&nbsp;<a href=javascript:hyperlink(\"Field\",\"V\")>V</a></td></tr>"},
    {"s", "", "<td>&nbsp;<input type=text size=10 id=Field value=\"\">",
     "<td id=Field>&nbsp;</td></tr>",
     "<td>&nbsp;<a href=javascript:hyperlink(\"Field\",\"\")></a></td></tr>"},
    {"", "V", "<td>&nbsp;<input type=text size=10 id=Field value=\"V\">",
     "<td id=Field>&nbsp;V</td></tr>",
     "<td>&nbsp;<a href=javascript:hyperlink(\"Field\",\"V\")>V</a></td></tr>"},
    {"E", "15", "<td>&nbsp;<input type=text size=10 id=Field value=\"15\">",
     "<td id=Field>&nbsp;15</td></tr>",
     "<td>&nbsp;<a href=javascript:hyperlink(\"Field\",\"15\")>15</a></td></tr>"},
    {"t", "V", "<td>&nbsp;<textarea rows=4 cols=30 id=Field>V</textarea>",
     "<td id=Field>&nbsp;V</td></tr>",
     "<td>&nbsp;<a href=javascript:hyperlink(\"Field\",\"V\")>V</a></td></tr>"},
    {"u", "20261115 103059",
     "<td>&nbsp;<input type=text size=15 id=Field value=11/15/2026><small><i>mm/dd/yyyy</i></small>"
     "<input type=text size=4 id=Field_time value=1030><small><i>hhmm</i></small>",
     "<td>&nbsp;11/15/2026&nbsp;&nbsp<small><i>mm/dd/yyyy</i></small>&nbsp;1030</td></tr>",
     "<td>&nbsp;<a href=javascript:hyperlink(\"Field\",\"20261115 103059\")>20261115 103059</a>"
     "</td></tr>"},
    {"u", "2026",
     "<td>&nbsp;<input type=text size=15 id=Field value=//2026><small><i>mm/dd/yyyy</i></small>"
     "<input type=text size=4 id=Field_time value=><small><i>hhmm</i></small>",
     "<td>&nbsp;//2026&nbsp;&nbsp<small><i>mm/dd/yyyy</i></small>&nbsp;</td></tr>",
     "<td>&nbsp;<a href=javascript:hyperlink(\"Field\",\"2026\")>2026</a></td></tr>"},
    {"u", "",
     "<td>&nbsp;<input type=text size=15 id=Field value=><small><i>mm/dd/yyyy</i></small>"
     "<input type=text size=4 id=Field_time value=><small><i>hhmm</i></small>",
     "<td>&nbsp;<input disabled=true type=text size=10 id=Field></td></tr>",
     "<td>&nbsp;<a href=javascript:hyperlink(\"Field\",\"\")></a></td></tr>"},
    {"e", "15",
     "<td>&nbsp;<SELECT name=Field id=Field><OPTION value=15 selected>Open"
     "<OPTION value=20 >Done</SELECT></td>",
     "<td>&nbsp;Open</td></tr>", "<td>&nbsp;Open</td></tr>"},
    {"e", "99",
     "<td>&nbsp;<SELECT name=Field id=Field><OPTION value=15 >Open"
     "<OPTION value=20 >Done</SELECT></td>",
     "<td>&nbsp;</td></tr>", "<td>&nbsp;</td></tr>"},
};

class ModifyRowOfType : public testing::TestWithParam<TypeCase> {};

TEST_P(ModifyRowOfType, OffersAnInputWhenRecordAndFieldCanBeChanged) {
    const TypeCase& type = GetParam();
    for (const bool hasHyperlink : {false, true}) {
        for (const std::string_view userInterface : {"2", "3"}) {
            const OneField plain(
                Section::Orders, "Field",
                attributes(type.dataType, true, false, hasHyperlink, userInterface), entries);
            EXPECT_EQ(rowEnd(plain, type.value, true), std::string(type.input) + "</td></tr>");
            const OneField zoomed(
                Section::Orders, "Field",
                attributes(type.dataType, true, true, hasHyperlink, userInterface), entries);
            EXPECT_EQ(rowEnd(zoomed, type.value, true),
                      std::string(type.input) + zoom + "</td></tr>");
        }
    }
}

TEST_P(ModifyRowOfType, ShowsATextWhenRecordOrFieldCannotBeChanged) {
    const TypeCase& type = GetParam();
    for (const bool hasHyperlink : {false, true}) {
        for (const bool hasZoom : {false, true}) {
            const std::string expected = hasHyperlink ? type.hyperlink : type.text;
            const OneField modifiable(Section::Orders, "Field",
                                      attributes(type.dataType, true, hasZoom, hasHyperlink),
                                      entries);
            EXPECT_EQ(rowEnd(modifiable, type.value, false), expected);
            const OneField fixed(Section::Orders, "Field",
                                 attributes(type.dataType, false, hasZoom, hasHyperlink), entries);
            EXPECT_EQ(rowEnd(fixed, type.value, false), expected);
            EXPECT_EQ(rowEnd(fixed, type.value, true), expected);
        }
    }
}

TEST_P(ModifyRowOfType, TravelsHiddenWhenNoFormShowsIt) {
    const TypeCase& type = GetParam();
    const std::string expected =
        "<tr style=\"display:none\"><td nowrap>&nbsp;Label</td><td>&nbsp;"
        "<input type=text size=10 id=\"Field\" value=\"" +
        std::string(type.value) + "\"></td></tr>";
    for (const std::string_view userInterface : {"", "0", "1", "4", " 2"}) {
        for (const bool isEditable : {false, true}) {
            const OneField field(Section::Orders, "Field",
                                 attributes(type.dataType, true, true, true, userInterface),
                                 entries);
            EXPECT_EQ(modifyRow(field.withValue(type.value), isEditable), expected);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, ModifyRowOfType, testing::ValuesIn(typeCases));

TEST(ModifyRow, FieldWithoutMapperEntryTravelsHiddenUnderItsName) {
    const OneField other(Section::Orders, "Other", "LABEL='Label' UINTERFACE='2'");
    const forms::FormField known = other.withValue("V");
    const forms::FormField unknown = forms::formField(known.form, "Unknown", "V");
    EXPECT_EQ(modifyRow(unknown, true),
              "<tr style=\"display:none\"><td nowrap>&nbsp;Unknown</td><td>&nbsp;"
              "<input type=text size=10 id=\"Unknown\" value=\"V\"></td></tr>");
}

TEST(ModifyRow, ValuesAndLabelsGoInUnescaped) {
    const OneField field(Section::Orders, "Field",
                         "LABEL='&lt;b&gt;' UINTERFACE='2' MODIFIABLE='True' DATATYPE='s'");
    EXPECT_EQ(modifyRow(field.withValue("a\"<&"), true),
              "<tr><td nowrap>&nbsp;<b></td><td>&nbsp;<input type=text size=10 id=Field "
              "value=\"a\"<&\"></td></tr>");
}

TEST(ModifyRow, SomeFieldsHaveWideInputs) {
    for (const std::string name : {"ServiceItem", "ReferenceA"}) {
        const OneField field(Section::Activities, name, attributes("s", true, false, false));
        EXPECT_EQ(rowEnd(field, "V", true),
                  "<td>&nbsp;<input type=text size=30 id=" + name + " value=\"V\"></td></tr>");
        EXPECT_EQ(rowEnd(field, "V", false), "<td id=" + name + ">&nbsp;V</td></tr>");
    }
}

TEST(ModifyRow, PriorityZeroShowsAsEmpty) {
    const OneField field(Section::Orders, "ProblemPriority", attributes("s", true, false, false));
    EXPECT_EQ(rowEnd(field, "0", true),
              "<td>&nbsp;<input type=text size=10 id=ProblemPriority value=\"\"></td></tr>");
    EXPECT_EQ(rowEnd(field, "0", false), "<td id=ProblemPriority>&nbsp;</td></tr>");
    EXPECT_EQ(rowEnd(field, "00", false), "<td id=ProblemPriority>&nbsp;00</td></tr>");
}

TEST(ModifyRow, PriorityZeroStaysInALink) {
    const OneField field(Section::Orders, "ProblemPriority", attributes("s", false, false, true));
    EXPECT_EQ(rowEnd(field, "0", true),
              "<td>&nbsp;<a href=javascript:hyperlink(\"ProblemPriority\",\"0\")>0</a></td></tr>");
}

TEST(ModifyRow, OldObjectNumberZeroShowsAsEmptyInATextOnly) {
    const OneField field(Section::Orders, "OldObjectNumber", attributes("s", true, false, false));
    EXPECT_EQ(rowEnd(field, "0", true),
              "<td>&nbsp;<input type=text size=10 id=OldObjectNumber value=\"0\"></td></tr>");
    EXPECT_EQ(rowEnd(field, "0", false), "<td id=OldObjectNumber>&nbsp;</td></tr>");
}

TEST(ModifyRow, OrderStatusIsADisabledDropDownWhetherOrNotItCanBeChanged) {
    const std::string cell =
        "<td>&nbsp;<SELECT disabled=true name=OrderStatus id=OrderStatus>"
        "<OPTION value=15 >Open<OPTION value=20 selected>Done</SELECT></td>";
    const OneField field(Section::Orders, "OrderStatus", attributes("e", true, false, false),
                         entries);
    EXPECT_EQ(rowEnd(field, "20", true), cell + "</td></tr>");
    EXPECT_EQ(rowEnd(field, "20", false), cell + "</tr>");
}

TEST(ModifyRow, CharactersOfAStampAreCountedNotBytes) {
    const OneField field(Section::Orders, "Field", attributes("u", false, false, false));
    EXPECT_EQ(
        rowEnd(field, "20äö1115-1030", false),
        "<td>&nbsp;11/15/20äö&nbsp;&nbsp<small><i>mm/dd/yyyy</i></small>&nbsp;1030</td></tr>");
}

}  // namespace
}  // namespace tandril::test
