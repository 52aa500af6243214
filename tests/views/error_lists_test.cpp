#include "views/error_lists.h"

#include <gtest/gtest.h>

#include "support/documents.h"

namespace tandril::test {
namespace {

std::string label(std::string_view code) {
    return "[" + std::string(code) + "]";
}

std::string rowsOf(std::string_view entries) {
    const store::UploadReport report(document("<R><File>" + std::string(entries) + "</File></R>"));
    const std::string html = views::errorList(report, label);
    const std::string header = "[SLBEU0294]</td></tr>";
    const std::size_t start = html.find(header) + header.size();
    return html.substr(start, html.find("</div>", start) - start);
}

TEST(ErrorList, IsAPanelWithAHeaderRow) {
    const store::UploadReport report(document("<R/>"));
    EXPECT_EQ(views::errorList(report, label),
              "<table width=100% border=0 cellspacing=0 cellpadding=0 bgcolor=#C7D4EB><tr>"
              "<td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>"
              "<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;<strong>[SLBEU0291]"
              "</strong></td><td valign=bottom align=right><input type=submit  "
              "onclick=javascript:winclose(\"divList\") value=\" x \"></td></tr></table></td></tr>"
              "<tr><td width=100%><div style=\"height:125; overflow:auto;\">"
              "<table border=0 cellspacing=1 cellpadding=0 width=100%><tr>"
              "<td class=tableheader >[SLBEU0096]</td><td class=tableheader >[SLBEU0294]</td></tr>"
              "</div></table></td></tr></table>");
}

TEST(ErrorList, AnOrder) {
    EXPECT_EQ(rowsOf("<e Status='Error' Order='A1' Description='no &lt;b&gt;'/>"),
              "<tr class=tablerows><td><span id=A1 class=links onclick=javascript:showdetails("
              "\"1\",\"A1\",\"\",\"\",\"1\")>[SLBEU0000]: A1</span></td><td>no <b></td></tr>");
}

TEST(ErrorList, AnActivity) {
    EXPECT_EQ(rowsOf("<e Status='Error' Order='A1' Activity='10' CostLine='7'/>"),
              "<tr class=tablerows><td><span id=A1 class=links onclick=javascript:showdetails("
              "\"2\",\"A1\",\"10\",\"\",\"1\")>[SLBEU0279]:A1/ 10</span></td><td></td></tr>");
}

TEST(ErrorList, ACostLineOfEveryType) {
    struct Case {
        std::string type, kind, name;
    };
    for (const Case& c : {Case{"Material", "3", "[SLBEU0295]"},
                          {"Labor", "4", "[SLBEU0296]"},
                          {"Other", "5", "[SLBEU0094]"},
                          {"Travel", "", ""}}) {
        EXPECT_EQ(rowsOf("<e Status='Error' Order='A1' Activity='10' CostLine='7' CostType='" +
                         c.type + "'/>"),
                  "<tr class=tablerows><td><span class=links onclick=javascript:showdetails(\"" +
                      c.kind + "\",\"A1\",\"10\",\"7\",\"1\")>" + c.name +
                      ": A1/ 10/ 7</span></td><td></td></tr>");
    }
}

TEST(ErrorList, AnEntryWithoutActivityIsAnOrderUnlessItIsAnHourRegistration) {
    const std::string order = "<e Status='Error' Order='A1' ";
    for (const std::string more :
         {"CostType='Labor'/>", "CostLine='7'/>", "CostType='Travel' CostLine='7'/>"}) {
        EXPECT_NE(rowsOf(order + more).find("[SLBEU0000]: A1"), std::string::npos) << more;
    }
    EXPECT_NE(rowsOf(order + "CostType='Labor' CostLine='7'/>").find("[SLBEU0296]: A1/ / 7"),
              std::string::npos);
}

TEST(ErrorList, OnlyErrorsInDocumentOrder) {
    const std::string rows = rowsOf(
        "<e Status='Error' Order='B'/><e Status='Completed' Order='C'/>"
        "<e Status='Error' Order='A'/><e Order='D'/>");
    EXPECT_LT(rows.find(": B<"), rows.find(": A<"));
    EXPECT_EQ(rows.find(": C<"), std::string::npos);
    EXPECT_EQ(rows.find(": D<"), std::string::npos);
}

TEST(ErrorPool, KeepsTheEntityWithoutSemicolon) {
    EXPECT_EQ(views::errorPool(3, label),
              "<a class=cssOption href=javascript:ShowErrors()>*&nbsp[SLBEU0290](3)</a>");
}

}  // namespace
}  // namespace tandril::test
