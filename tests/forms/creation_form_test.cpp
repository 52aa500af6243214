#include "forms/creation_form.h"

#include <gtest/gtest.h>

#include "support/documents.h"

namespace tandril::test {
namespace {

using forms::formKind;

constexpr std::string_view fields =
    "<ccsocservcordr><ServiceOrder NEW='True'/><OrderStatus LABEL='Status'/>"
    "<Problem LABEL='Problem' NEW='True'/></ccsocservcordr>"
    "<ccsocservcactv><ServiceOrder/><Activity/><ActivityStatus LABEL='Status'/>"
    "<ActivityDescription LABEL='Text'/></ccsocservcactv>"
    "<ccsocservcmatl><LineNumber NEW='True'/><Activity NEW='True'/><ServiceOrder NEW='True'/>"
    "<ActivityDescription LABEL='Text' NEW='True' DATATYPE='s'/></ccsocservcmatl>"
    "<ccsocservclabr><ActivityDescription LABEL='Text' DATATYPE='s'/></ccsocservclabr>"
    "<ccsocservcothr/>"
    "<I18N>"
    "<T ID='SLBEU0000' DESCRIPTION='Order'/><T ID='SLBEU0041' DESCRIPTION='Activity'/>"
    "<T ID='SLBEU0042' DESCRIPTION='Line'/><T ID='SLBEU0270' DESCRIPTION='New material'/>"
    "<T ID='SLBEU0271' DESCRIPTION='New labour'/><T ID='SLBEU0272' DESCRIPTION='New other'/>"
    "<T ID='SLBEU0284' DESCRIPTION='Save'/><T ID='SLBEU0285' DESCRIPTION='Create'/>"
    "<T ID='SLBEU0286' DESCRIPTION='New order'/><T ID='SLBEU0287' DESCRIPTION='New activity'/>"
    "<T ID='SLBEU0334' DESCRIPTION='New hours'/></I18N>";

std::string panelWithTitle(std::string_view title) {
    return "<table width=100% border=0 cellspacing=0 cellpadding=0 class=details><tr><td "
           "width=100%>"
           "<table width=100% border=0 cellspacing=2 cellpadding=0><tr class=titles><td nowrap  "
           "valign=bottom width=100%> &nbsp;<strong>" +
           std::string(title) +
           "</strong></td><td valign=bottom align=right><input type=submit  "
           "onclick=javascript:winclose(\"divDetails\") value=\" x \"></td></tr></table></td></tr>";
}

std::string formNamed(std::string_view name) {
    return "<tr><td width=100%><form name=" + std::string(name) +
           "><table width=100% border=0 class=details>";
}

std::string textRow(std::string_view label, std::string_view value) {
    return "<tr><td>&nbsp;" + std::string(label) + "</td><td>&nbsp;" + std::string(value) +
           "</td></tr>";
}

std::string hiddenRow(std::string_view label, std::string_view field, std::string_view value) {
    return "<tr style=\"display:none\"> <td nowrap>&nbsp;" + std::string(label) +
           "</td> <td>&nbsp;<input type=text size=10 id=\"" + std::string(field) + "\" value=\"" +
           std::string(value) + "\"></td></tr>";
}

const std::string ruler = "<tr><td colspan=2><hr></td></tr>";
const std::string formEnd = ruler + "</table></form></td></tr>";

std::string buttons(std::string_view create, std::string_view save) {
    return "<tr><td align=right><table><tr><td><td align=right>"
           "<input type=button value=Create onclick=javascript:newObject(" +
           std::string(create) +
           ")></td><td align=right><input id=btnSave type=button value=Save "
           "onclick=javascript:saveObject(" +
           std::string(save) + ")></td></td></tr></table></td></tr></table>";
}

struct CreationForm : testing::Test {
    mapper::FieldMapper mapper = mapperOf(fields);
};

TEST_F(CreationForm, NewOrderIsOpen) {
    EXPECT_EQ(forms::creationForm(mapper, *formKind("1"), {"", "", ""}, "_1", ""),
              panelWithTitle("New order") + formNamed("order__1") + textRow("Order", "_1") +
                  hiddenRow("Status", "OrderStatus", "15") +
                  "<tr><td nowrap>&nbsp;Problem</td><td>&nbsp;<input type=text size=20 "
                  "id=Problem></td></tr>" +
                  formEnd + buttons("1,\"\",\"\"", "\"order\",\"_1\",\"\",\"\",\"New\""));
}

TEST_F(CreationForm, CreateButtonRepeatsWhatThePagePassed) {
    const std::string html =
        forms::creationForm(mapper, *formKind("1"), {"A1", "10", ""}, "_1", "");
    EXPECT_TRUE(html.ends_with(buttons("1,\"A1\",\"10\"", "\"order\",\"_1\",\"\",\"\",\"New\"")))
        << html;
}

TEST_F(CreationForm, NewActivityHangsOnItsOrder) {
    EXPECT_EQ(forms::creationForm(mapper, *formKind("2"), {"A1", "10", ""}, "_2", ""),
              panelWithTitle("New activity") + formNamed("activity_A1__2") +
                  textRow("Order", "A1") + textRow("Activity", "_2") +
                  hiddenRow("Status", "ActivityStatus", "15") +
                  hiddenRow("Text", "ActivityDescription", "") + formEnd +
                  buttons("2,\"A1\",\"10\"", "\"activity\",\"A1\",\"_2\",\"\",\"New\""));
}

TEST_F(CreationForm, NewLineShowsTheDescriptionOfItsActivity) {
    EXPECT_EQ(forms::creationForm(mapper, *formKind("3"), {"A1", "10", ""}, "_3", "Check pump"),
              panelWithTitle("New material") + formNamed("material_A1_10__3") +
                  textRow("Order", "A1") + textRow("Activity", "10") + textRow("Line", "_3") +
                  "<tr><td nowrap>&nbsp;Text</td><td>Check pump</td></tr>" + formEnd +
                  buttons("3,\"A1\",\"10\"", "\"material\",\"A1\",\"10\",\"_3\",\"New\""));
}

TEST_F(CreationForm, LabourAndOtherLines) {
    EXPECT_EQ(forms::creationForm(mapper, *formKind("4"), {"A1", "10", ""}, "_3", "Check pump"),
              panelWithTitle("New labour") + formNamed("labor_A1_10__3") + textRow("Order", "A1") +
                  textRow("Activity", "10") + textRow("Line", "_3") +
                  hiddenRow("Text", "ActivityDescription", "Check pump") + formEnd +
                  buttons("4,\"A1\",\"10\"", "\"labor\",\"A1\",\"10\",\"_3\",\"New\""));
    EXPECT_EQ(forms::creationForm(mapper, *formKind("5"), {"A1", "10", ""}, "_3", ""),
              panelWithTitle("New other") + formNamed("other_A1_10__3") + textRow("Order", "A1") +
                  textRow("Activity", "10") + textRow("Line", "_3") + formEnd +
                  buttons("5,\"A1\",\"10\"", "\"other\",\"A1\",\"10\",\"_3\",\"New\""));
}

TEST_F(CreationForm, DescriptionIsTakenFromTheActivityOfTheStore) {
    const store::OrderStore store = storeOf(
        "<ccsocservcactv><ServiceOrder ID='A1'><a Activity='10'><S/>"
        "<ActivityDescription>Check pump</ActivityDescription></a><a Activity='20'/>"
        "</ServiceOrder></ccsocservcactv>");
    EXPECT_EQ(forms::activityDescription(store, {"A1", "10", ""}), "Check pump");
    EXPECT_EQ(forms::activityDescription(store, {"A1", "20", ""}), "");
    EXPECT_EQ(forms::activityDescription(store, {"A2", "10", ""}), "");
}

TEST_F(CreationForm, ActivityWithoutOrderChoosesOne) {
    const store::OrderStore store = storeOf(
        "<ccsocservcordr><record ServiceOrder='A1'/><record ServiceOrder='_1'/>"
        "</ccsocservcordr>");
    const std::string orderRow = forms::orderSelectRow(mapper, store);
    EXPECT_EQ(orderRow,
              "<tr><td>&nbsp;Order</td><td><SELECT name=ServiceOrder><OPTION value=A1>A1"
              "<OPTION value=_1>_1</SELECT></td></tr>");
    EXPECT_EQ(forms::newActivityForm(mapper, "_2", orderRow),
              panelWithTitle("New activity") + formNamed("activity__2") +
                  textRow("Activity", "_2") + orderRow +
                  hiddenRow("Status", "ActivityStatus", "15") +
                  hiddenRow("Text", "ActivityDescription", "") + formEnd +
                  "<tr><td align=right><input id=btnSave type=button value=Save "
                  "onclick=javascript:CreateActivity(\"_2\",\"activity__2\")></td></tr></table>");
}

TEST_F(CreationForm, MaterialFormLeavesItsDropDownsToThePage) {
    EXPECT_EQ(forms::newMaterialForm(mapper, "_7"),
              panelWithTitle("Create Material Cost") + formNamed("material__7") +
                  "<tr><td>&nbsp;Service Order</td><td id=tdSelectActivity>&nbsp;&nbsp;"
                  "<select id=dropOrder onchange=getActivityDrop()></select></td></tr>"
                  "<tr><td>&nbsp;Service Activity</td><td>&nbsp;&nbsp;<select id=dropActivity>"
                  "</select></td></tr>"
                  "<tr><td>&nbsp;Material Line Id</td><td>&nbsp;&nbsp;_7</td></tr>"
                  "<tr><td nowrap>&nbsp;Text</td><td></td></tr>" +
                  ruler +
                  "<tr><td>&nbsp;<td><td align=right><input type=button value=Save "
                  "onclick=javascript:saveObject(\"material\",\"\",\"\",\"_7\",\"New\")></td></tr>"
                  "</table></form></td></tr></table>");
}

TEST_F(CreationForm, HourRegistrationHasNoKeyRowsAndNoCreateButton) {
    EXPECT_EQ(forms::newHourRegistrationForm(mapper, "_5"),
              panelWithTitle("New hours") + formNamed("hra__5") +
                  hiddenRow("Text", "ActivityDescription", "") + formEnd +
                  "<tr><td align=right><table><tr><td><td align=right><input id=btnSave "
                  "type=button value=Save "
                  "onclick=javascript:saveObject(\"hra\",\"\",\"\",\"_5\",\"New\")></td></td></tr>"
                  "</table></td></tr></table>");
}

TEST_F(CreationForm, SectionThatTheMapperLacksHasNoRows) {
    const mapper::FieldMapper empty = mapperOf("");
    EXPECT_EQ(forms::newHourRegistrationForm(empty, "_5"),
              panelWithTitle("") + formNamed("hra__5") + formEnd +
                  "<tr><td align=right><table><tr><td><td align=right><input id=btnSave "
                  "type=button value= "
                  "onclick=javascript:saveObject(\"hra\",\"\",\"\",\"_5\",\"New\")></td></td></tr>"
                  "</table></td></tr></table>");
}

}  // namespace
}  // namespace tandril::test
