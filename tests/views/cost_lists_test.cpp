#include "views/cost_lists.h"

#include <gtest/gtest.h>

#include "support/documents.h"

namespace tandril::test {
namespace {

using views::Lines;

constexpr std::string_view fields =
    "<ccsocservcmatl><Item LABEL='Item' UINTERFACE='1' HYPERLINK='True'/>"
    "<Hours LABEL='Amount' UINTERFACE='1'/></ccsocservcmatl>"
    "<ccsocservclabr><Task LABEL='Task' UINTERFACE='1' HYPERLINK='True'/></ccsocservclabr>"
    "<I18N><T ID='SLBEU0297' DESCRIPTION='Materials'/><T ID='SLBEU0298' DESCRIPTION='Labours'/>"
    "<T ID='SLBEU0332' DESCRIPTION='Hours'/><T ID='SLBEU0314' DESCRIPTION='New'/>"
    "<T ID='SLBEU0315' DESCRIPTION='Nothing'/></I18N>";

constexpr std::string_view layout =
    "<COL WIDTH=120> <COL WIDTH=120><COL WIDTH=150> <COL WIDTH=150><COL WIDTH=120> "
    "<COL WIDTH=120> <COL WIDTH=120>";

std::string titleRow(std::string_view title, std::string_view panel) {
    return "<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>"
           "<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;<strong>" +
           std::string(title) +
           "</strong></td><td valign=bottom align=right><input type=submit  "
           "onclick=javascript:winclose(\"" +
           std::string(panel) + "\") value=\" x \"></td></tr></table></td></tr>";
}

std::string details(std::string_view id, std::string_view arguments, std::string_view text) {
    return "<span id=" + std::string(id) + " class=links onclick=javascript:showdetails(" +
           std::string(arguments) + ")>" + std::string(text) + "</span>";
}

std::string groupRows(std::string_view order, std::string_view activity, int columns) {
    const std::string o(order);
    const std::string a(activity);
    return "<tr class=orderrow><td colspan=" + std::to_string(columns) + ">&nbsp;" +
           details(o, "\"1\",\"" + o + "\",\"\",\"\",\"2\"", o) +
           "</td></tr><tr class=orderrow><td>&nbsp;</td><td colspan=" +
           std::to_string(columns - 1) + ">&nbsp;" +
           details(o, "\"2\",\"" + o + "\",\"" + a + "\",\"\",\"2\"", a) + "</td></tr>";
}

std::string materialRow(std::string_view order, std::string_view activity, std::string_view line,
                        std::string_view cells) {
    const std::string o(order);
    const std::string l(line);
    return "<tr class=tablerows><td>&nbsp;</td><td>&nbsp;</td><td>&nbsp;" +
           details(o, "\"3\",\"" + o + "\",\"" + std::string(activity) + "\",\"" + l + "\",\"2\"",
                   l) +
           "</td>" + std::string(cells) + "</tr>";
}

std::string materialHeader() {
    return std::string(layout) +
           "<tr><td class=tableheader nowrap>Item</td><td class=tableheader "
           "nowrap>Amount</td></tr>";
}

std::string listPanel(std::string_view title, std::string_view panel, std::string_view content) {
    return "<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>" +
           titleRow(title, panel) +
           "<tr><td width=100%><div style=\"height:125; overflow:auto;\">"
           "<table border=0 cellspacing=1 cellpadding=0 width=100%>" +
           std::string(content) + "</table></td></tr></table>";
}

constexpr std::string_view materials =
    "<ccsocservcmatl><ServiceOrder ID='A' Activity='10' State='O'>"
    "<l LineNumber='1' State='O'><Item>P1</Item><Hours>2</Hours></l>"
    "<l LineNumber='2' State='NU'/></ServiceOrder>"
    "<ServiceOrder ID='A' Activity='20' State='NU'><l LineNumber='1' State='MU'/></ServiceOrder>"
    "<ServiceOrder ID='A' Activity='10' State='N'><l LineNumber='9' State='M'/></ServiceOrder>"
    "</ccsocservcmatl>";

const std::string itemCells =
    "<td align=center>&nbsp;<a href=javascript:hyperlink(\"Item\",\"P1\",\"material\")>P1</a></td>"
    "<td align=center>&nbsp;2</td>";

struct CostLists : testing::Test {
    mapper::FieldMapper mapper = mapperOf(fields);
};

TEST_F(CostLists, ListEveryGroupOfTheActivity) {
    const auto store = storeOf(materials);
    EXPECT_EQ(
        costLineList(Lines::OfActivity, "Material", "A", "10", store, mapper),
        listPanel("Materials", "divCosts",
                  materialHeader() + groupRows("A", "10", 2) +
                      materialRow("A", "10", "1", itemCells) + materialRow("A", "10", "2", "") +
                      groupRows("A", "10", 2) + materialRow("A", "10", "9", "")));
}

TEST_F(CostLists, ShowWorkingLinesOfWorkingGroups) {
    const auto store = storeOf(materials);
    EXPECT_EQ(costLineList(Lines::Working, "Material", "", "", store, mapper),
              listPanel("Materials", "divList",
                        materialHeader() + groupRows("A", "10", 2) +
                            materialRow("A", "10", "1", itemCells) + groupRows("A", "10", 2) +
                            materialRow("A", "10", "9", "")));
}

TEST_F(CostLists, ShowSentLinesOfUnchangedAndSentGroups) {
    const auto store = storeOf(materials);
    EXPECT_EQ(
        costLineList(Lines::Sent, "Material", "", "", store, mapper),
        listPanel("Materials", "divList",
                  materialHeader() + groupRows("A", "10", 2) + materialRow("A", "10", "2", "") +
                      groupRows("A", "20", 2) + materialRow("A", "20", "1", "")));
}

TEST_F(CostLists, KnowCostTypesByTheirExactWord) {
    const auto store = storeOf(materials);
    for (const std::string_view word : {"material", "MATERIAL", "1", "", "Hra"}) {
        EXPECT_EQ(costLineList(Lines::OfActivity, word, "A", "10", store, mapper), "") << word;
    }
}

constexpr std::string_view labour =
    "<ccsocservclabr><ServiceOrder ID='A' Activity='10' State='O'><l LineNumber='1' State='O'/>"
    "</ServiceOrder><ServiceOrder State='O'>"
    "<l LineNumber='7' State='O'><StartDate>20021115 1030</StartDate><Task>T</Task></l>"
    "<l LineNumber='8' State='NU'/></ServiceOrder>"
    "<ServiceOrder ID='' Activity='' State='x'><l LineNumber='9' State='N'/></ServiceOrder>"
    "<ServiceOrder ID='A' Activity='' State='O'><l LineNumber='10' State='O'/></ServiceOrder>"
    "</ccsocservclabr>";

std::string hourRow(std::string_view line, std::string_view stamp, std::string_view cells) {
    const std::string l(line);
    return "<tr class=tablerows><td align=center>&nbsp;<span id=" + l +
           " class=links onclick=javascript:showdetailsforhra(\"4\",\"\",\"\",\"" + l +
           "\",\"2\")>" + l + "</span></td><td align=center>" + std::string(stamp) + "</td>" +
           std::string(cells) + "</tr>";
}

const std::string taskCell =
    "<td align=center>&nbsp;<a href=javascript:hyperlink(\"Task\",\"T\",\"labor\")>T</a></td>";
constexpr std::string_view blankRow = "<tr>&nbsp;&nbsp;&nbsp;&nbsp;</tr>";

TEST_F(CostLists, HourRegistrationsAreLinesWithoutOrderAndActivity) {
    const auto store = storeOf(labour);
    EXPECT_EQ(hourRegistrationList(Lines::OfActivity, store, mapper),
              listPanel("Hours", "divList",
                        std::string(blankRow) + hourRow("7", "11/15/2002 1030", taskCell) +
                            hourRow("8", "// ", "") + hourRow("9", "// ", "")));
}

TEST_F(CostLists, HourRegistrationsByTheStateOfTheLineAlone) {
    const auto store = storeOf(labour);
    EXPECT_EQ(hourRegistrationList(Lines::Working, store, mapper),
              listPanel("Hours", "divList",
                        std::string(blankRow) + hourRow("7", "11/15/2002 1030", taskCell) +
                            hourRow("9", "// ", "")));
    EXPECT_EQ(hourRegistrationList(Lines::Sent, store, mapper),
              listPanel("Hours", "divList", std::string(blankRow) + hourRow("8", "// ", "")));
}

TEST_F(CostLists, LeaveHourRegistrationsOutOfLabourByState) {
    const auto store = storeOf(labour);
    const std::string html = costLineList(Lines::Working, "Labor", "", "", store, mapper);
    EXPECT_NE(html.find(">1</span>"), std::string::npos);
    EXPECT_NE(html.find(">10</span>"), std::string::npos);
    EXPECT_EQ(html.find(">7</span>"), std::string::npos);
    EXPECT_EQ(html.find(">9</span>"), std::string::npos);
}

TEST_F(CostLists, OnlyLabourHasHourRegistrations) {
    const auto store = storeOf(
        "<ccsocservcmatl><ServiceOrder State='O'><L LineNumber='7' State='N'/></ServiceOrder>"
        "</ccsocservcmatl>");
    EXPECT_EQ(costLineList(Lines::Working, "Material", "", "", store, mapper),
              listPanel("Materials", "divList",
                        materialHeader() + groupRows("", "", 2) + materialRow("", "", "7", "")));
}

TEST_F(CostLists, HeaderOffersTheCostTypes) {
    EXPECT_EQ(
        views::costLinesHeader(
            "A", "10", [](std::string_view code) { return "L" + std::string(code.substr(5)); }),
        "<table width=100% border=0 cellspacing=0 cellpadding=0>"
        "<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>"
        "<tr class=titles><td nowrap valign=bottom width=100%>&nbsp;<strong>L0316</strong>"
        "</td><td valign=bottom align=right>"
        "<input type=submit  onclick=javascript:minimize(\"divCostHeader\") value=\" _ \">"
        "<input type=submit  onclick=javascript:winclose(\"divCostHeader\") value=\" x \">"
        "</td></tr></table></td></tr><tr><td width=100%>"
        "<table border=0 class=tablerows cellspacing=1 cellpadding=0 width=100%>"
        "<tr><td nowrap>L0000</td><td>&nbsp;&nbsp;A</td></tr>"
        "<tr><td>L0279</td><td>&nbsp;&nbsp;10</td></tr>"
        "<tr><td>L0093</td><td>&nbsp;&nbsp;<SELECT name=costtype onchange=javascript:"
        "showlines(costtype.options[costtype.selectedIndex].value,\"A\",\"10\")>"
        "<option value=0 selected>L0317<option value=1>L0318<option value=2> L0319"
        "<option value=3>L0320</SELECT></td></tr></table></td></tr></table>");
}

TEST_F(CostLists, CostLinesOfTheActivityLeaveTheirPanelOpen) {
    const auto store = storeOf(materials);
    EXPECT_EQ(views::activityCostLines("1", "A", "20", false, &store, mapper),
              "<table width=100% border=0 cellspacing=0 cellpadding=0>" +
                  titleRow("Materials", "divCostLines") +
                  "<tr><td width=100%><table border=0 cellspacing=1 cellpadding=0 Width = 100%>" +
                  materialHeader() + groupRows("A", "20", 2) + materialRow("A", "20", "1", "") +
                  "</table>");
}

std::string noLines(std::string_view content) {
    return "<table border=0 cellspacing=1 cellpadding=0 width=100%><tr class=tablerows>"
           "<td colspan=0>" +
           std::string(content) + "</td></tr></table>";
}

TEST_F(CostLists, OnlineTellsThatThereAreNoLines) {
    const auto store = storeOf(materials);
    for (const std::string_view digit : {"0", "1", "2", "Material", ""}) {
        EXPECT_EQ(views::activityCostLines(digit, "A", "99", false, &store, mapper),
                  noLines("Nothing"));
    }
    EXPECT_EQ(views::activityCostLines("1", "A", "10", false, nullptr, mapper), noLines("Nothing"));
}

TEST_F(CostLists, OfflineOffersANewLine) {
    const auto store = storeOf(materials);
    const auto button = [](std::string_view kind) {
        return "<input type=button value=\"New\" onclick=javascript:newObject(\"" +
               std::string(kind) + "\",\"A\",\"99\")>";
    };
    EXPECT_EQ(views::activityCostLines("1", "A", "99", true, &store, mapper),
              noLines("There are no cost lines found. " + button("3")));
    EXPECT_EQ(views::activityCostLines("3", "A", "99", true, &store, mapper),
              noLines("Nothing" + button("5")));
    EXPECT_EQ(views::activityCostLines("0", "A", "99", true, &store, mapper),
              noLines("Nothing" + button("")));
}

}  // namespace
}  // namespace tandril::test
