#include "masterdata/listing.h"

#include <gmock/gmock.h>

#include "masterdata/windows.h"

namespace tandril::test {
namespace {

using masterdata::listing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::string_view frame =
    "<table width=100% border=0 cellspacing=0 cellpadding=0>"
    "<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>"
    "<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;<strong>Units</strong></td>"
    "<td valign=bottom align=right><input type=submit  onclick=javascript:winclose(\"divList\")"
    " value=\" x \"></td></tr></table></td></tr>"
    "<tr><td width=100%>"
    "<table width=100% border=0 cellspacing=0 cellpadding=0 class=details>";
constexpr std::string_view closing = "</table></td></tr></table>";

std::string framed(std::string_view rows) {
    return std::string(frame) + std::string(rows) + std::string(closing);
}

TEST(Listing, ShowsEveryColumnButTheCompanyAndEveryRecord) {
    Windows windows;
    windows.database.answer("SELECT * FROM UNITS", {{"CUNI", "COMP", "DSCA", "CURR", "Comp"},
                                                    {{"pcs", "100", "<b>Pieces</b>", "", "x"},
                                                     {"m²", "200", "", "1", ""}}});
    EXPECT_EQ(
        listing(windows.source(), "UNIT"),
        framed("<tr class=tableheader><td align=left nowrap>&nbsp;Unit</td>"
               "<td align=left nowrap>&nbsp;Description</td>"
               "<td align=left nowrap>&nbsp;CURR</td><td align=left nowrap>&nbsp;Comp</td></tr>"
               "<tr><td nowrap>&nbsp;pcs</td><td nowrap>&nbsp;<b>Pieces</b></td>"
               "<td nowrap>&nbsp;</td><td nowrap>&nbsp;x</td></tr>"
               "<tr><td nowrap>&nbsp;m²</td><td nowrap>&nbsp;</td><td nowrap>&nbsp;1</td>"
               "<td nowrap>&nbsp;</td></tr>"));
    EXPECT_THAT(windows.database.statements, ElementsAre("SELECT * FROM UNITS"));
}

TEST(Listing, SaysThatATableHasNoRecords) {
    Windows windows;
    windows.database.answer("SELECT * FROM UNITS", {{"COMP", "CUNI"}, {}});
    EXPECT_EQ(listing(windows.source(), "UNIT"), framed("<tr><td>No rows</td></tr>"));
}

TEST(Listing, ShowsATableOfTheCompanyAlone) {
    Windows windows;
    windows.database.answer("SELECT * FROM UNITS", {{"COMP"}, {{"100"}}});
    EXPECT_EQ(listing(windows.source(), "UNIT"), framed("<tr class=tableheader></tr><tr></tr>"));
}

TEST(Listing, SaysThatThereIsNoDatabaseBeforeAnythingElse) {
    Windows windows;
    EXPECT_EQ(listing(windows.withoutDatabase(), "UNIT"), "No database");
    EXPECT_EQ(listing(windows.withoutDatabase(), "nothing"), "No database");
}

TEST(Listing, SaysThatThereIsNoSuchTableWithoutAskingTheConnection) {
    Windows windows;
    windows.connection.reset();
    for (const std::string_view code : {"", "unit", "UNITS", "UNIT ", "CUNI", "' OR ''='"}) {
        EXPECT_EQ(listing(windows.source(), code), "No table") << code;
    }
    EXPECT_THAT(windows.database.statements, IsEmpty());
}

TEST(Listing, IsAFaultOnAClosedConnectionOrAMissingTable) {
    Windows windows;
    windows.database.fail("SELECT * FROM TASKS", "no such table");
    EXPECT_THROW(listing(windows.source(), "TASK"), Fault);
    windows.connection.reset();
    EXPECT_THROW(listing(windows.source(), "UNIT"), Fault);
}

TEST(Listing, HasNoTextsWithoutAFieldMapper) {
    Windows windows;
    windows.mapper = mapper::FieldMapper::blank();
    windows.database.answer("SELECT * FROM UNITS", {{"CUNI"}, {{"pcs"}}});
    EXPECT_THAT(
        listing(windows.source(), "UNIT"),
        AllOf(HasSubstr("<strong></strong>"), HasSubstr("<td align=left nowrap>&nbsp;CUNI</td>")));
    EXPECT_EQ(listing(windows.source(), "none"), "");
    EXPECT_EQ(listing(windows.withoutDatabase(), "UNIT"), "");
}

}  // namespace
}  // namespace tandril::test
