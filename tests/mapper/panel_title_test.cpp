#include <gtest/gtest.h>

#include "html/html.h"

namespace tandril::html {
namespace {

TEST(PanelTitle, WithMinimizeAndClose) {
    EXPECT_EQ(panelTitle(PanelButtons::MinimizeAndClose, "T", "divX"),
              "<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>"
              "<tr class=titles><td nowrap valign=bottom width=100%>&nbsp;<strong>T</strong></td>"
              "<td valign=bottom align=right>"
              "<input type=submit  onclick=javascript:minimize(\"divX\") value=\" _ \">"
              "<input type=submit  onclick=javascript:winclose(\"divX\") value=\" x \">"
              "</td></tr></table></td></tr>");
}

TEST(PanelTitle, WithCloseOnly) {
    EXPECT_EQ(panelTitle(PanelButtons::Close, "T", "divX"),
              "<tr><td width=100%><table width=100% border=0 cellspacing=2 cellpadding=0>"
              "<tr class=titles><td nowrap  valign=bottom width=100%> &nbsp;<strong>T</strong></td>"
              "<td valign=bottom align=right>"
              "<input type=submit  onclick=javascript:winclose(\"divX\") value=\" x \">"
              "</td></tr></table></td></tr>");
}

TEST(ScriptCall, QuotesItsArguments) {
    EXPECT_EQ(scriptCall("zoom", arguments({"F", "", "a b"})),
              "javascript:zoom(\"F\",\"\",\"a b\")");
    EXPECT_EQ(arguments({}), "");
    EXPECT_EQ(arguments({""}), "\"\"");
}

}  // namespace
}  // namespace tandril::html
