#include "forms/detail_form.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "support/documents.h"

namespace tandril::test {
namespace {

using forms::detailForm;
using forms::formKind;
using forms::RecordKey;

constexpr std::string_view fields =
    "<ccsocservcordr><OrderStatus LABEL='Status' DATATYPE='s' UINTERFACE='2' MODIFIABLE='True'/>"
    "</ccsocservcordr>"
    "<ccsocservcactv><Problem LABEL='Problem' DATATYPE='s' UINTERFACE='2' MODIFIABLE='True' "
    "ZOOM='True'/></ccsocservcactv>"
    "<ccsocservcmatl><Item LABEL='Item' DATATYPE='s' UINTERFACE='2' MODIFIABLE='True'/>"
    "<CostComponent LABEL='Component' DATATYPE='s'/></ccsocservcmatl>"
    "<ccsocservclabr><Task LABEL='Task' DATATYPE='s' ZOOM='True'/>"
    "<Hours LABEL='Hours' DATATYPE='s' UINTERFACE='2' MODIFIABLE='True'/></ccsocservclabr>"
    "<I18N>"
    "<T ID='SLBEU0000' DESCRIPTION='Order'/><T ID='SLBEU0042' DESCRIPTION='Line'/>"
    "<T ID='SLBEU0270' DESCRIPTION='New material'/><T ID='SLBEU0271' DESCRIPTION='New labour'/>"
    "<T ID='SLBEU0272' DESCRIPTION='New other'/><T ID='SLBEU0273' DESCRIPTION='Materials'/>"
    "<T ID='SLBEU0274' DESCRIPTION='Labours'/><T ID='SLBEU0275' DESCRIPTION='Others'/>"
    "<T ID='SLBEU0276' DESCRIPTION='New activity'/><T ID='SLBEU0277' DESCRIPTION='Order form'/>"
    "<T ID='SLBEU0278' DESCRIPTION='Activity form'/><T ID='SLBEU0279' DESCRIPTION='Activity'/>"
    "<T ID='SLBEU0280' DESCRIPTION='Material form'/><T ID='SLBEU0281' DESCRIPTION='Labour form'/>"
    "<T ID='SLBEU0282' DESCRIPTION='Delete'/><T ID='SLBEU0283' DESCRIPTION='Other form'/>"
    "<T ID='SLBEU0284' DESCRIPTION='Save'/><T ID='SLBEU0333' DESCRIPTION='Hours form'/>"
    "<T ID='SLBSE9163' DESCRIPTION='New hours'/><T ID='SLBSE9170' DESCRIPTION='Order of hours'/>"
    "<T ID='SLBSE9172' DESCRIPTION='Activity of hours'/></I18N>";

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

const std::string formEnd = "</table></form></td></tr>";

// The bar with these two cells' contents.
std::string bar(std::string_view save, std::string_view deleteCell) {
    return "<tr><td width=100%><table border=0 cellspacing=0 cellpadding=0 width=100%><tr>"
           "<td align=right>" +
           std::string(save) + "</td><td align=right><table><tr>" + std::string(deleteCell) +
           "</tr></table></td></tr></table></td></tr></table>";
}

std::string save(std::string_view arguments) {
    return "<input id=btnSave type=button value=Save onclick=javascript:saveObject(" +
           std::string(arguments) + ")>";
}

std::string deleteCell(std::string_view arguments) {
    return "<td align=right><input id=btnDelete type=button value=Delete "
           "onclick=javascript:deleteObject(" +
           std::string(arguments) + ")></td>";
}

std::string textRow(std::string_view label, std::string_view value) {
    return "<tr><td>&nbsp;" + std::string(label) + "</td><td>&nbsp;" + std::string(value) +
           "</td></tr>";
}

std::string orderWith(std::string_view status, std::string_view state) {
    return "<ccsocservcordr><record ServiceOrder='A1' State='" + std::string(state) +
           "'><OrderStatus>" + std::string(status) + "</OrderStatus></record></ccsocservcordr>";
}

std::string activityWith(std::string_view status, std::string_view state) {
    return "<ccsocservcactv><ServiceOrder ID='A1'><a Activity='10' State='" + std::string(state) +
           "'><ActivityStatus>" + std::string(status) +
           "</ActivityStatus><Problem>P1</Problem></a></ServiceOrder></ccsocservcactv>";
}

std::string lineWith(std::string_view section, std::string_view state, std::string_view children) {
    const std::string tag(section);
    return "<" + tag + "><ServiceOrder ID='A1' Activity='10'><l LineNumber='5' State='" +
           std::string(state) + "'>" + std::string(children) + "</l></ServiceOrder></" + tag + ">";
}

struct DetailForm : testing::Test {
    mapper::FieldMapper mapper = mapperOf(fields);

    std::string form(const store::OrderStore& store, std::string_view kind, const RecordKey& key,
                     bool correctsError = false) const {
        return detailForm(mapper, store, *formKind(kind), key, correctsError).value_or("(none)");
    }
    std::string registrationForm(const store::OrderStore& store, const RecordKey& key,
                                 bool correctsError = false) const {
        return detailForm(mapper, store, forms::hourRegistrationKind(), key, correctsError)
            .value_or("(none)");
    }
};

TEST_F(DetailForm, OrderLinksToANewActivity) {
    EXPECT_EQ(form(storeOf(orderWith("15", "O")), "1", {"A1", "", ""}),
              panelWithTitle("Order form") +
                  "<tr><td align=right><a href=javascript:newobject(2,\"A1\")>New activity</a>"
                  "</td></tr>" +
                  formNamed("order_A1") +
                  "<tr><td nowrap>&nbsp;Status</td><td>&nbsp;<input type=text size=10 "
                  "id=OrderStatus value=\"15\"></td></tr>" +
                  formEnd + bar(save("\"order\",\"A1\",\"\",\"\",\"Modify\""), ""));
}

TEST_F(DetailForm, ActivityLinksToItsCostLines) {
    const std::string links =
        "<tr><td align=right><table class=hyperbutton>"
        "<tr class=hyperbutton><td>&nbsp;</td><td align=right>"
        "<a href=javascript:ListCostLines(\"Material\",\"A1\",\"10\")>Materials</a></td>"
        "<td align=right><a href=javascript:newobject(3,\"A1\",\"10\")>New material</a></td></tr>"
        "<tr class=hyperbutton><td>&nbsp;</td><td align=right>"
        "<a href=javascript:ListCostLines(\"Labor\",\"A1\",\"10\")>Labours</a></td>"
        "<td align=right><a href=javascript:newobject(4,\"A1\",\"10\")>New labour</a></td></tr>"
        "<tr class=hyperbutton><td>&nbsp;</td><td align=right>"
        "<a href=javascript:ListCostLines(\"Other\",\"A1\",\"10\")>Others</a></td>"
        "<td align=right><a href=javascript:newobject(5,\"A1\",\"10\")>New other</a></td></tr>"
        "</table></td></tr>";
    EXPECT_EQ(form(storeOf(orderWith("15", "O") + activityWith("15", "N")), "2", {"A1", "10", ""}),
              panelWithTitle("Activity form") + links + formNamed("activity_A1_10") +
                  "<tr style=\"display:none\"><td nowrap>&nbsp;ActivityStatus</td><td>&nbsp;"
                  "<input type=text size=10 id=\"ActivityStatus\" value=\"15\"></td></tr>"
                  "<tr><td nowrap>&nbsp;Problem</td><td>&nbsp;<input type=text size=10 id=Problem "
                  "value=\"P1\"><span class=links "
                  "onclick=javascript:zoom(\"Problem\",\"activity_A1_10\")>"
                  "<small><strong>...</strong></small></span></td></tr>" +
                  formEnd +
                  bar(save("\"activity\",\"A1\",\"10\",\"\",\"Modify\""),
                      deleteCell("\"A1\",\"10\",\"\",\"\"")));
}

TEST_F(DetailForm, CostLineShowsItsKeyAndItsOwnFieldsLast) {
    const store::OrderStore store = storeOf(
        orderWith("15", "O") +
        lineWith("ccsocservcmatl", "N", "<CostComponent>C1</CostComponent><Item>I1</Item>"));
    EXPECT_EQ(form(store, "3", {"A1", "10", "5"}),
              panelWithTitle("Material form") +
                  "<tr><td align=right><a href=javascript:newobject(3,\"A1\",\"10\")>New material"
                  "</a></td></tr>" +
                  formNamed("material_A1_10_5") + textRow("Order", "A1") +
                  textRow("Activity", "10") + textRow("Line", "5") +
                  "<tr><td nowrap>&nbsp;Item</td><td>&nbsp;<input type=text size=10 id=Item "
                  "value=\"I1\"></td></tr>"
                  "<tr><td nowrap>&nbsp;Component</td><td>&nbsp;<input type=text size=10 "
                  "id=\"CostComponent\" value=\"C1\"></td></tr>" +
                  formEnd +
                  bar(save("\"material\",\"A1\",\"10\",\"5\",\"Modify\""),
                      deleteCell("\"A1\",\"10\",\"5\",\"material\"")));
}

TEST_F(DetailForm, LabourLineIsCalledLabor) {
    const store::OrderStore store =
        storeOf(orderWith("15", "O") + lineWith("ccsocservclabr", "N", ""));
    EXPECT_EQ(form(store, "4", {"A1", "10", "5"}),
              panelWithTitle("Labour form") +
                  "<tr><td align=right><a href=javascript:newobject(4,\"A1\",\"10\")>New labour"
                  "</a></td></tr>" +
                  formNamed("labor_A1_10_5") + textRow("Order", "A1") + textRow("Activity", "10") +
                  textRow("Line", "5") + formEnd +
                  bar(save("\"labor\",\"A1\",\"10\",\"5\",\"Modify\""),
                      deleteCell("\"A1\",\"10\",\"5\",\"labor\"")));
}

TEST_F(DetailForm, OtherLine) {
    const store::OrderStore store =
        storeOf(orderWith("15", "O") + lineWith("ccsocservcothr", "O", ""));
    EXPECT_EQ(form(store, "5", {"A1", "10", "5"}),
              panelWithTitle("Other form") +
                  "<tr><td align=right><a href=javascript:newobject(5,\"A1\",\"10\")>New other"
                  "</a></td></tr>" +
                  formNamed("other_A1_10_5") + textRow("Order", "A1") + textRow("Activity", "10") +
                  textRow("Line", "5") + formEnd +
                  bar(save("\"other\",\"A1\",\"10\",\"5\",\"Modify\""), ""));
}

TEST_F(DetailForm, HourRegistrationHangsOnNoOrderAndIsAlwaysEditable) {
    const store::OrderStore store = storeOf(
        "<ccsocservclabr><ServiceOrder><l LineNumber='5' State='O'><Task>T1</Task>"
        "<Hours>2</Hours></l></ServiceOrder></ccsocservclabr>");
    EXPECT_EQ(registrationForm(store, {"", "", "5"}),
              panelWithTitle("Hours form") +
                  "<tr><td align=right><a href=javascript:newobject(4,\"\",\"\")>New hours</a>"
                  "</td></tr>" +
                  formNamed("hra___5") + textRow("Order of hours", "") +
                  textRow("Activity of hours", "") + textRow("Line", "5") +
                  "<tr><td nowrap>&nbsp;Hours</td><td>&nbsp;<input type=text size=10 id=Hours "
                  "value=\"2\"></td></tr>"
                  "<tr><td nowrap>&nbsp;Task</td><td>&nbsp;<input type=text size=10 id=\"Task\" "
                  "value=\"T1\"><span class=links onclick=javascript:zoom(\"Task\",\"hra___5\")>"
                  "<small><strong>...</strong></small></span></td></tr>" +
                  formEnd + bar(save("\"hra\",\"\",\"\",\"5\",\"Modify\""), ""));
}

TEST_F(DetailForm, NewHourRegistrationCanBeDeleted) {
    const store::OrderStore store = storeOf(
        "<ccsocservclabr><ServiceOrder ID='' Activity=''><l LineNumber='5' State='N'/>"
        "</ServiceOrder></ccsocservclabr>");
    EXPECT_TRUE(registrationForm(store, {"", "", "5"})
                    .ends_with(bar(save("\"hra\",\"\",\"\",\"5\",\"Modify\""),
                                   deleteCell("\"\",\"\",\"5\",\"hra\""))));
}

TEST_F(DetailForm, RecordThatIsNotThereHasNoForm) {
    const store::OrderStore store = storeOf(orderWith("15", "O") + activityWith("15", "O") +
                                            lineWith("ccsocservcmatl", "O", ""));
    EXPECT_EQ(form(store, "1", {"a1", "", ""}), "(none)");
    EXPECT_EQ(form(store, "2", {"A1", "20", ""}), "(none)");
    EXPECT_EQ(form(store, "2", {"", "10", ""}), "(none)");
    EXPECT_EQ(form(store, "3", {"A1", "10", "6"}), "(none)");
    EXPECT_EQ(form(store, "4", {"A1", "10", "5"}), "(none)");
    EXPECT_EQ(registrationForm(store, {"", "", "5"}), "(none)");
}

TEST_F(DetailForm, KindWithoutFormIsAnEmptyPanel) {
    EXPECT_EQ(forms::emptyDetailForm(), panelWithTitle("") + "</table>");
}

// Who may edit: which record, in which states, and what its form ends with.
enum class End { Bar, BarWithoutSave, NoBar };
struct PermissionCase {
    const char* what;
    const char* orderStatus;
    const char* activityStatus;
    const char* kind;
    const char* state;
    bool correctsError;
    bool isEditable;
    End end;
};

constexpr PermissionCase permissionCases[] = {
    {"open order", "15", "15", "1", "O", false, true, End::Bar},
    {"completed order", "20", "15", "1", "M", false, false, End::BarWithoutSave},
    {"completed order, sent", "20", "15", "1", "MU", false, true, End::Bar},
    {"completed order, new and sent", "20", "15", "1", "NU", false, true, End::Bar},
    {"completed order with an error", "20", "15", "1", "M", true, true, End::Bar},
    {"closed order", "35", "15", "1", "O", false, false, End::NoBar},
    {"closed order, sent", "35", "15", "1", "MU", false, false, End::NoBar},
    {"closed order with an error", "35", "15", "1", "O", true, true, End::Bar},
    {"order whose activity is closed", "15", "35", "1", "O", false, true, End::Bar},
    {"open activity", "15", "15", "2", "O", false, true, End::Bar},
    {"completed activity of an open order", "15", "20", "2", "O", false, true, End::Bar},
    {"closed activity of an open order", "15", "35", "2", "O", false, false, End::NoBar},
    {"activity of a closed order", "35", "15", "2", "MU", false, false, End::NoBar},
    {"activity of a completed order", "20", "15", "2", "O", false, false, End::BarWithoutSave},
    {"activity with an error", "35", "35", "2", "O", true, true, End::Bar},
    {"line of an open order", "15", "15", "3", "O", false, true, End::Bar},
    {"line of a completed order", "20", "20", "3", "O", false, false, End::BarWithoutSave},
    {"line of a completed order, sent", "20", "20", "3", "NU", false, true, End::Bar},
    {"line of a closed activity", "15", "35", "3", "NU", false, false, End::NoBar},
    {"line with an error", "35", "35", "3", "O", true, true, End::Bar},
};

TEST_F(DetailForm, EditableAndClosedRecords) {
    const std::map<std::string, std::pair<std::string, std::string>> input{
        {"1", {"id=OrderStatus value=", "<td id=OrderStatus>"}},
        {"2", {"id=Problem value=", "<td id=Problem>"}},
        {"3", {"id=Item value=", "<td id=Item>"}}};
    for (const PermissionCase& row : permissionCases) {
        const store::OrderStore store = storeOf(
            orderWith(row.orderStatus, row.state) + activityWith(row.activityStatus, row.state) +
            lineWith("ccsocservcmatl", row.state, "<Item>I1</Item>"));
        const std::string html =
            form(store, row.kind, forms::keyAt(formKind(row.kind)->level, {"A1", "10", "5"}),
                 row.correctsError);
        EXPECT_EQ(html.find(input.at(row.kind).first) != std::string::npos, row.isEditable)
            << row.what;
        EXPECT_EQ(html.find(input.at(row.kind).second) == std::string::npos, row.isEditable)
            << row.what;
        EXPECT_EQ(html.find("btnSave") != std::string::npos, row.end == End::Bar) << row.what;
        EXPECT_EQ(html.ends_with(bar("", "")), row.end == End::BarWithoutSave) << row.what;
        EXPECT_EQ(html.ends_with(formEnd + "</table>"), row.end == End::NoBar) << row.what;
    }
}

TEST_F(DetailForm, OnlyARecordMadeHereAndNotSentCanBeDeleted) {
    for (const std::string_view state : {"O", "M", "N", "MU", "NU", ""}) {
        const std::string html = form(storeOf(orderWith("20", state)), "1", {"A1", "", ""}, false);
        EXPECT_EQ(html.find(deleteCell("\"A1\",\"\",\"\",\"\"")) != std::string::npos, state == "N")
            << state;
    }
}

TEST_F(DetailForm, CostLineFieldsOfAnOrderAreOrdinaryRows) {
    const store::OrderStore store = storeOf(
        "<ccsocservcordr><record ServiceOrder='A1'><S>15</S><StartDate>20261115 1030</StartDate>"
        "</record></ccsocservcordr>");
    EXPECT_NE(form(store, "1", {"A1", "", ""})
                  .find("<input type=text size=10 id=\"StartDate\" value=\"20261115 1030\">"),
              std::string::npos);
}

TEST_F(DetailForm, FirstOfSeveralGroupsCounts) {
    const store::OrderStore store =
        storeOf(orderWith("15", "O") +
                "<ccsocservcothr><ServiceOrder ID='A1' Activity='10'><l LineNumber='5'>"
                "<Text>first</Text></l></ServiceOrder><ServiceOrder ID='A1' Activity='10'>"
                "<l LineNumber='5'><Text>second</Text></l><l LineNumber='6'/></ServiceOrder>"
                "</ccsocservcothr>");
    EXPECT_NE(form(store, "5", {"A1", "10", "5"}).find("value=\"first\""), std::string::npos);
    EXPECT_EQ(form(store, "5", {"A1", "10", "6"}), "(none)");
}

}  // namespace
}  // namespace tandril::test
