#include "views/record_lists.h"

#include <gtest/gtest.h>

#include "support/documents.h"

namespace tandril::test {
namespace {

using views::recordList;
using views::RecordList;

constexpr std::string_view fields =
    "<ccsocservcordr><Status UINTERFACE='2'/><City LABEL='City' UINTERFACE='1'/></ccsocservcordr>"
    "<ccsocservcactv><Status UINTERFACE='2'/><Task LABEL='Task' UINTERFACE='3'/>"
    "<Note LABEL='Note' UINTERFACE='1'/></ccsocservcactv>"
    "<I18N><T ID='SLBEU0232' DESCRIPTION='Mine'/><T ID='SLBEU0237' DESCRIPTION='Done'/>"
    "<T ID='SLBEU0238' DESCRIPTION='Gone'/><T ID='SLBEU0302' DESCRIPTION='Orders'/></I18N>";

constexpr std::string_view layout =
    "<COL WIDTH=120> <COL WIDTH=120><COL WIDTH=150> <COL WIDTH=150><COL WIDTH=120> "
    "<COL WIDTH=120> <COL WIDTH=120>";

std::string titleRow(std::string_view title) {
    return "<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>"
           "<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;<strong>" +
           std::string(title) +
           "</strong></td><td valign=bottom align=right><input type=submit  "
           "onclick=javascript:winclose(\"divList\") value=\" x \"></td></tr></table></td></tr>";
}

std::string activityHeader() {
    return std::string(layout) +
           "<tr><td class=tableheader nowrap>Task</td><td class=tableheader nowrap>Note</td></tr>";
}

std::string orderHeader() {
    return std::string(layout) + "<tr><td class=tableheader nowrap>City</td></tr>";
}

std::string order(std::string_view number) {
    const std::string n(number);
    return "<tr class=orderrow><td colspan=2>&nbsp;<span id=" + n +
           " class=links onclick=javascript:showdetails(\"1\",\"" + n + "\",\"\",\"\",\"2\")>" + n +
           "</span></td></tr>";
}

std::string activity(std::string_view number, std::string_view activityNumber,
                     std::string_view cells, std::string_view marker = "") {
    const std::string n(number);
    const std::string a(activityNumber);
    return "<tr class=tablerows><td>" + std::string(marker) + "</td><td>&nbsp;<span id=" + n +
           " class=links onclick=javascript:showdetails(\"2\",\"" + n + "\",\"" + a +
           "\",\"\",\"2\")>" + a + "</span></td>" + std::string(cells) + "</tr>";
}

std::string orderLine(std::string_view number, std::string_view cells) {
    const std::string n(number);
    return "<tr class=tablerows><td>&nbsp;<span id=" + n +
           " class=links onclick=javascript:showdetails(\"1\",\"" + n + "\",\"\",\"\",\"2\")>" + n +
           "</span></td>" + std::string(cells) + "</tr>";
}

std::string cell(std::string_view value) {
    return "<td align=center>&nbsp;" + std::string(value) + "</td>";
}

std::string myActivities(std::string_view rows) {
    return "<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>" +
           titleRow("Mine") +
           "<tr><td width=100%><table border=0 cellspacing=2 cellpadding=0 width=100%  height=25>" +
           activityHeader() + "</table><div style=\"height:125; overflow:auto;\">" +
           "<table border=0 cellspacing=2 cellpadding=0 width=100%  height=300>" +
           std::string(layout) + std::string(rows) + "</table></div></td></tr></table>";
}

std::string agenda(std::string_view title, std::string_view rows) {
    return "<table width=100% border=0 cellspacing=0 cellpadding=0>" + titleRow(title) +
           "<tr><td width=100%><div style=\"height:125; overflow:auto;\">"
           "<table border=0 cellspacing=1 cellpadding=0 width=100%>" +
           activityHeader() + std::string(rows) + "</div></table></td></tr></table>";
}

std::string orders(std::string_view rows) {
    return "<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>" +
           titleRow("Orders") +
           "<tr><td width=100%><div style=\"height:125; overflow:auto;\">"
           "<table border=0 cellspacing=1 cellpadding=0 width=100%>" +
           orderHeader() + std::string(rows) + "</div></table></td></tr></table>";
}

std::string viewedActivities(std::string_view rows) {
    return "<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB>" +
           titleRow("Mine") +
           "<tr><td width=100%><table border=0 cellspacing=2 cellpadding=0 width=100%>" +
           activityHeader() + "</table><div style=\"height:125; overflow:auto;\">" +
           "<table border=0 cellspacing=2 cellpadding=0 width=100%>" + std::string(layout) +
           std::string(rows) + "</table></div></td></tr></table>";
}

struct RecordLists : testing::Test {
    mapper::FieldMapper mapper = mapperOf(fields);

    std::string show(RecordList list, std::string_view sections) const {
        const store::OrderStore store = storeOf(sections);
        return recordList(list, store, mapper);
    }
};

// Orders in all three statuses, each with an activity.
constexpr std::string_view statuses =
    "<ccsocservcordr><record ServiceOrder='A'><Status>15</Status></record>"
    "<record ServiceOrder='B'><Status>20</Status></record>"
    "<record ServiceOrder='C'><Status>35</Status></record></ccsocservcordr>"
    "<ccsocservcactv><ServiceOrder ID='A'><a Activity='10'><Status>15</Status><Task>T1</Task>"
    "<Note>N1</Note></a><a Activity='20'><Note>N2</Note></a></ServiceOrder>"
    "<ServiceOrder ID='B'><a Activity='10'/></ServiceOrder>"
    "<ServiceOrder ID='C'><a Activity='10'/></ServiceOrder>"
    "<ServiceOrder ID='Nowhere'><a Activity='10'/></ServiceOrder></ccsocservcactv>";

TEST_F(RecordLists, MyActivitiesAreThoseOfOpenOrders) {
    EXPECT_EQ(show(RecordList::MyActivities, statuses),
              myActivities(order("A") + activity("A", "10", cell("T1") + cell("N1")) +
                           activity("A", "20", cell("N2"))));
}

TEST_F(RecordLists, CompletedAgendaHasNoMarker) {
    EXPECT_EQ(show(RecordList::CompletedAgenda, statuses),
              agenda("Done", order("B") + activity("B", "10", "")));
}

TEST_F(RecordLists, CanceledAgendaMarksEachActivity) {
    EXPECT_EQ(show(RecordList::CanceledAgenda, statuses),
              agenda("Gone", order("C") + activity("C", "10", "", " X ")));
}

TEST_F(RecordLists, AnOrderWithoutActivitiesHasItsOrderRow) {
    EXPECT_EQ(show(RecordList::MyActivities,
                   "<ccsocservcordr><record ServiceOrder='A'><S>15</S></record></ccsocservcordr>"
                   "<ccsocservcactv><ServiceOrder ID='A'/></ccsocservcactv>"),
              myActivities(order("A")));
}

TEST_F(RecordLists, NothingToShowIsNoPanel) {
    for (const RecordList list :
         {RecordList::MyActivities, RecordList::CompletedAgenda, RecordList::CanceledAgenda,
          RecordList::Orders, RecordList::WorkingOrders, RecordList::SentOrders,
          RecordList::WorkingActivities, RecordList::SentActivities}) {
        EXPECT_EQ(show(list, ""), "");
        EXPECT_EQ(show(list, "<ccsocservcordr/><ccsocservcactv/>"), "");
    }
}

constexpr std::string_view orderStates =
    "<ccsocservcordr><record ServiceOrder='1' "
    "State='O'><Status>15</Status><City>Ulm</City></record>"
    "<record ServiceOrder='2' State='N'/><record ServiceOrder='3' State='M'/>"
    "<record ServiceOrder='4' State='NU'/><record ServiceOrder='5' State='MU'/>"
    "<record ServiceOrder='6' State='x'/><record ServiceOrder='7'/><other ServiceOrder='8' "
    "State='O'/></ccsocservcordr>";

TEST_F(RecordLists, OrdersAreAllRecords) {
    EXPECT_EQ(
        show(RecordList::Orders, orderStates),
        orders(orderLine("1", cell("Ulm")) + orderLine("2", "") + orderLine("3", "") +
               orderLine("4", "") + orderLine("5", "") + orderLine("6", "") + orderLine("7", "")));
}

TEST_F(RecordLists, OrdersByState) {
    EXPECT_EQ(show(RecordList::WorkingOrders, orderStates),
              orders(orderLine("1", cell("Ulm")) + orderLine("2", "") + orderLine("3", "")));
    EXPECT_EQ(show(RecordList::SentOrders, orderStates),
              orders(orderLine("4", "") + orderLine("5", "")));
}

constexpr std::string_view activityStates =
    "<ccsocservcactv><ServiceOrder ID='1' State='O'><a Activity='1' State='O'/>"
    "<a Activity='2' State='MU'/></ServiceOrder>"
    "<ServiceOrder ID='2' State='NU'><a Activity='1' State='NU'/><a Activity='2' State='N'/>"
    "</ServiceOrder><ServiceOrder ID='3' State='M'><a Activity='1' State='NU'/></ServiceOrder>"
    "<ServiceOrder ID='4'><a Activity='1' State='N'/></ServiceOrder></ccsocservcactv>";

TEST_F(RecordLists, WorkingActivitiesTestGroupAndActivity) {
    EXPECT_EQ(show(RecordList::WorkingActivities, activityStates),
              viewedActivities(order("1") + activity("1", "1", "") + order("3")));
}

TEST_F(RecordLists, SentActivitiesAdmitUnchangedGroups) {
    EXPECT_EQ(show(RecordList::SentActivities, activityStates),
              viewedActivities(order("1") + activity("1", "2", "") + order("2") +
                               activity("2", "1", "")));
}

TEST_F(RecordLists, OnlyTheFirstSectionIsWalked) {
    EXPECT_EQ(show(RecordList::Orders,
                   "<x><ccsocservcordr><record ServiceOrder='1'/></ccsocservcordr></x>"
                   "<ccsocservcordr><record ServiceOrder='2'/></ccsocservcordr>"),
              orders(orderLine("1", "")));
}

}  // namespace
}  // namespace tandril::test
