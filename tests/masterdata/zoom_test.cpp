#include "masterdata/zoom.h"

#include <gmock/gmock.h>

#include "masterdata/windows.h"

namespace tandril::test {
namespace {

using masterdata::fieldWindow;
using masterdata::WindowKind;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::string_view opening = "<table width=100% border=0 cellspacing=0 cellpadding=0>";
constexpr std::string_view closing = "</table></td></tr></table>";

std::string framed(const std::string& title, const std::string& rows) {
    return std::string(opening) +
           "<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>"
           "<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;<strong>" +
           title +
           "</strong></td><td valign=bottom align=right>"
           "<input type=submit  onclick=javascript:winclose(\"divZoomHype\") value=\" x \"></td>"
           "</tr></table></td></tr><tr><td width=100%>"
           "<table width=100% border=0 cellspacing=0 cellpadding=0 class=details>" +
           rows + std::string(closing);
}

std::string message(const std::string& text) {
    return std::string(opening) + "<tr><td>" + text + "</td></tr>" + std::string(closing);
}

TEST(ZoomWindow, OffersEveryRecordForTheField) {
    Windows windows;
    windows.database.answer(
        "SELECT * FROM UNITS",
        {{"COMP", "DSCA", "CUNI", "X"}, {{"1", "Pieces", "pcs", ""}, {"1", "", "\"h\"", "<i>"}}});
    EXPECT_EQ(
        fieldWindow(windows.source(), WindowKind::Zoom, "SalesQuantityUnit", "ignored"),
        framed(
            "Select",
            "<tr class=tableheader><td align=left nowrap>&nbsp;Description</td>"
            "<td align=left nowrap>&nbsp;Unit</td><td align=left nowrap>&nbsp;X</td></tr>"
            "<tr><td>Pieces</td>"
            "<td nowrap><a href=javascript:FillValues(\"pcs\",\"CUNI\")>pcs</a></td><td></td></tr>"
            "<tr><td></td>"
            "<td nowrap><a href=javascript:FillValues(\"\"h\"\",\"CUNI\")>\"h\"</a></td>"
            "<td><i></td></tr>"));
    EXPECT_THAT(windows.database.statements, ElementsAre("SELECT * FROM UNITS"));
}

TEST(ZoomWindow, OffersTheObjectsOfAConfiguration) {
    Windows windows;
    windows.database.answer("SELECT * FROM OBJECTS WHERE CCFG = 'C-100'",
                            {{"COMP", "CCFG", "CROB", "OSEQ"}, {{"1", "C-100", "OB-1", "7"}}});
    EXPECT_EQ(
        fieldWindow(windows.source(), WindowKind::Zoom, "OriginalObject", "C-100"),
        framed("Select",
               "<tr class=tableheader><td align=left nowrap>&nbsp;CCFG</td>"
               "<td align=left nowrap>&nbsp;Object</td><td align=left nowrap>&nbsp;No.</td></tr>"
               "<tr><td>C-100</td>"
               "<td nowrap><a href=javascript:FillValues(\"OB-1\",\"CROB\",\"7\")>OB-1</a></td>"
               "<td>7</td></tr>"));
}

TEST(ZoomWindow, NeedsTheNumberOfAnObject) {
    Windows windows;
    windows.database.answer("SELECT * FROM OBJECTS WHERE CCFG = 'C'", {{"CROB"}, {{"OB-1"}}});
    EXPECT_THROW(fieldWindow(windows.source(), WindowKind::Zoom, "Object", "C"), Fault);
}

TEST(ZoomWindow, SaysThatThereIsNoRecord) {
    Windows windows;
    windows.database.answer("SELECT * FROM UNITS", {{"CUNI"}, {}});
    EXPECT_EQ(fieldWindow(windows.source(), WindowKind::Zoom, "Unit", ""), message("No record"));
}

TEST(ZoomWindow, DoesNotPutOtherValuesIntoAStatement) {
    Windows windows;
    windows.database.answer("SELECT * FROM UNITS", {{"CUNI"}, {}});
    EXPECT_EQ(fieldWindow(windows.source(), WindowKind::Zoom, "Unit", "it's"),
              message("No record"));
}

TEST(HyperlinkWindow, ShowsTheFirstRecord) {
    Windows windows;
    windows.database.answer(
        "SELECT * FROM UNITS WHERE CUNI = 'pcs'",
        {{"COMP", "CUNI", "DSCA", "X"}, {{"1", "pcs", "Pieces", ""}, {"2", "pcs", "Others", ""}}});
    EXPECT_EQ(fieldWindow(windows.source(), WindowKind::Hyperlink, "Unit", "pcs"),
              framed("Details",
                     "<tr><td nowrap>&nbsp;Unit</td><td>pcs</td></tr>"
                     "<tr><td nowrap>&nbsp;Description</td><td>Pieces</td></tr>"
                     "<tr><td nowrap>&nbsp;X</td><td></td></tr>"));
}

TEST(HyperlinkWindow, FindsAnObjectByItsName) {
    Windows windows;
    windows.database.answer("SELECT * FROM OBJECTS WHERE CROB = 'OB-1'", {{"CROB"}, {{"OB-1"}}});
    EXPECT_EQ(fieldWindow(windows.source(), WindowKind::Hyperlink, "NewObject", "OB-1"),
              framed("Details", "<tr><td nowrap>&nbsp;Object</td><td>OB-1</td></tr>"));
}

TEST(HyperlinkWindow, SaysThatThereIsNoRecord) {
    Windows windows;
    windows.database.answer("SELECT * FROM PROBLEMS WHERE CPRL = ''", {{"CPRL"}, {}});
    EXPECT_EQ(fieldWindow(windows.source(), WindowKind::Hyperlink, "Problem", ""),
              message("No record"));
}

TEST(HyperlinkWindow, RefusesAValueThatIsNoLiteral) {
    Windows windows;
    EXPECT_THROW(fieldWindow(windows.source(), WindowKind::Hyperlink, "Problem", "it's"), Fault);
    EXPECT_THAT(windows.database.statements, IsEmpty());
}

class FieldWindow : public ::testing::TestWithParam<WindowKind> {};

INSTANTIATE_TEST_SUITE_P(Kinds, FieldWindow,
                         ::testing::Values(WindowKind::Zoom, WindowKind::Hyperlink));

TEST_P(FieldWindow, SaysThatThereIsNoDatabase) {
    Windows windows;
    EXPECT_EQ(fieldWindow(windows.withoutDatabase(), GetParam(), "Problem", "it's"),
              std::string(opening) + "<tr><td>No database</td></tr></table>");
}

TEST_P(FieldWindow, IsAFaultOnAClosedConnection) {
    Windows windows;
    windows.connection.reset();
    EXPECT_THROW(fieldWindow(windows.source(), GetParam(), "Problem", "P1"), Fault);
}

TEST_P(FieldWindow, TakesUnknownFieldsForReferenceActivities) {
    Windows windows;
    windows.database.answer("SELECT * FROM REFERENCEACTIVITIES", {{"CRAC"}, {{"R"}}});
    windows.database.answer("SELECT * FROM REFERENCEACTIVITIES WHERE CRAC = 'R'",
                            {{"CRAC"}, {{"R"}}});
    EXPECT_THAT(fieldWindow(windows.source(), GetParam(), "' ; --", "R"), HasSubstr("CRAC"));
}

}  // namespace
}  // namespace tandril::test
