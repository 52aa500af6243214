#include "forms/new_row.h"

#include <gtest/gtest.h>

#include "forms/one_field.h"

namespace tandril::test {
namespace {

using forms::newRow;
using store::Section;

std::string attributes(std::string_view dataType, bool isNew, bool hasZoom) {
    return "LABEL='Label' DATATYPE='" + std::string(dataType) + "'" + flag("NEW", isNew) +
           flag("ZOOM", hasZoom);
}

constexpr std::string_view entries = "<i Id='15' Value='Open'/><i Id='20' Value='Done'/>";

struct TypeCase {
    const char* dataType;
    const char* input;
};

constexpr TypeCase typeCases[] = {
    {"s", "<td>&nbsp;<input type=text size=20 id=Field>"},
    {"", "<td>&nbsp;<input type=text size=20 id=Field>"},
    {"U", "<td>&nbsp;<input type=text size=20 id=Field>"},
    {"t", "<td>&nbsp;<textarea rows=4 cols=30 id=Field></textarea>"},
    {"u",
     "<td>&nbsp;<input type=text size=10 id=Field><small><i>mm/dd/yyyy</i></small>"
     "<input type=text size=4 id=Field_time><small><i>hhmm</i></small>"},
    {"e",
     "<td>&nbsp;<SELECT name=Field id=Field><OPTION value=15 selected>Open"
     "<OPTION value=20 >Done</SELECT></td>"},
};

class NewRowOfType : public testing::TestWithParam<TypeCase> {};

TEST_P(NewRowOfType, OffersAnEmptyInput) {
    const OneField field(Section::Orders, "Field", attributes(GetParam().dataType, true, false),
                         entries);
    EXPECT_EQ(newRow(field.withValue("15")),
              "<tr><td nowrap>&nbsp;Label</td>" + std::string(GetParam().input) + "</td></tr>");
}

TEST_P(NewRowOfType, ZoomFollowsTheInput) {
    const OneField field(Section::Orders, "Field", attributes(GetParam().dataType, true, true),
                         entries);
    EXPECT_EQ(newRow(field.withValue("15")),
              "<tr><td nowrap>&nbsp;Label</td>" + std::string(GetParam().input) +
                  "<span class=links onclick=javascript:zoom(\"Field\",\"order_A1\")>"
                  "<small><strong>...</strong></small></span></td></tr>");
}

TEST_P(NewRowOfType, TravelsHiddenWithItsValueWhenNewRecordsDoNotShowIt) {
    for (const bool hasZoom : {false, true}) {
        const OneField field(Section::Orders, "Field",
                             attributes(GetParam().dataType, false, hasZoom), entries);
        EXPECT_EQ(newRow(field.withValue("15")),
                  "<tr style=\"display:none\"> <td nowrap>&nbsp;Label</td> <td>&nbsp;"
                  "<input type=text size=10 id=\"Field\" value=\"15\"></td></tr>");
    }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, NewRowOfType, testing::ValuesIn(typeCases));

TEST(NewRow, IsShownWhateverTheOtherAttributesSay) {
    const OneField field(Section::Orders, "Field",
                         "LABEL='Label' DATATYPE='s' NEW='True' UINTERFACE='0' MODIFIABLE='False' "
                         "HYPERLINK='True'");
    EXPECT_EQ(newRow(field.withValue("")),
              "<tr><td nowrap>&nbsp;Label</td><td>&nbsp;<input type=text size=20 id=Field>"
              "</td></tr>");
}

TEST(NewRow, SomeFieldsHaveWideInputs) {
    for (const std::string name : {"ServiceItem", "ReferenceA"}) {
        const OneField field(Section::Material, name, attributes("s", true, false));
        EXPECT_EQ(newRow(field.withValue("")),
                  "<tr><td nowrap>&nbsp;Label</td><td>&nbsp;<input type=text size=30 id=" + name +
                      "></td></tr>");
    }
}

TEST(NewRow, OrderStatusOffersTheFirstEntryOnlyAndIsDisabled) {
    const OneField field(Section::Orders, "OrderStatus", attributes("e", true, false), entries);
    EXPECT_EQ(newRow(field.withValue("15")),
              "<tr><td nowrap>&nbsp;Label</td><td>&nbsp;"
              "<SELECT disabled=true name=OrderStatus id=OrderStatus>"
              "<OPTION value=15 selected>Open</SELECT></td></td></tr>");
}

TEST(NewRow, ObjectOfAnActivityIsFilledInByThePage) {
    for (const std::string name : {"Configuration", "ObjectNumber"}) {
        const OneField field(Section::Activities, name, attributes("s", true, true));
        EXPECT_EQ(newRow(field.withValue("V")),
                  "<tr> <td nowrap>&nbsp;Label</td> <td>&nbsp;"
                  "<input disabled=true type=text size=10 id=" +
                      name + " value=\"V\"></td></tr>");
    }
}

TEST(NewRow, HiddenObjectOfAnActivityTravelsHidden) {
    const OneField field(Section::Activities, "Configuration", attributes("s", false, false));
    EXPECT_EQ(newRow(field.withValue("")),
              "<tr style=\"display:none\"> <td nowrap>&nbsp;Label</td> <td>&nbsp;"
              "<input type=text size=10 id=\"Configuration\" value=\"\"></td></tr>");
}

TEST(NewRow, ObjectOfAnOrderIsAnInput) {
    const OneField field(Section::Orders, "Configuration", attributes("s", true, false));
    EXPECT_EQ(newRow(field.withValue("")),
              "<tr><td nowrap>&nbsp;Label</td><td>&nbsp;<input type=text size=20 id=Configuration>"
              "</td></tr>");
}

TEST(NewRow, CostLineShowsTheActivitysDescriptionAsText) {
    for (const Section section : store::costSections) {
        const OneField field(section, "ActivityDescription", attributes("s", true, false));
        EXPECT_EQ(newRow(field.withValue("Check pump")),
                  "<tr><td nowrap>&nbsp;Label</td><td>Check pump</td></tr>");
    }
}

TEST(NewRow, ActivitysOwnDescriptionIsAnInput) {
    const OneField field(Section::Activities, "ActivityDescription", attributes("s", true, false));
    EXPECT_EQ(newRow(field.withValue("")),
              "<tr><td nowrap>&nbsp;Label</td><td>&nbsp;"
              "<input type=text size=20 id=ActivityDescription></td></tr>");
}

TEST(NewRow, LongDescriptionOfACostLineIsATextArea) {
    const OneField field(Section::Other, "ActivityDescription", attributes("t", true, false));
    EXPECT_EQ(newRow(field.withValue("Check pump")),
              "<tr><td nowrap>&nbsp;Label</td><td>&nbsp;"
              "<textarea rows=4 cols=30 id=ActivityDescription></textarea></td></tr>");
}

}  // namespace
}  // namespace tandril::test
