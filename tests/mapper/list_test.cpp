#include "mapper/list.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tandril::mapper {
namespace {

constexpr std::string_view layout =
    "<COL WIDTH=120> <COL WIDTH=120><COL WIDTH=150> <COL WIDTH=150><COL WIDTH=120> "
    "<COL WIDTH=120> <COL WIDTH=120>";

FieldMapper sample() {
    auto document = xml::Document::parse(
        "<m><s><Plain LABEL='Plain text' UINTERFACE='1'/><Both LABEL='Both' UINTERFACE='3'/>"
        "<Form LABEL='Form only' UINTERFACE='2'/><Code DATATYPE='e' HYPERLINK='True' "
        "UINTERFACE='1'/><Link HYPERLINK='True' DATATYPE='u' UINTERFACE='1'/>"
        "<Stamp DATATYPE='u' UINTERFACE='1'/></s><hidden><A UINTERFACE='2'/><B/></hidden>"
        "<Code><c Id='1' Value='One'/></Code></m>");
    if (!document) {
        throw std::invalid_argument("sample");
    }
    return FieldMapper(std::move(*document));
}

TEST(ColumnHeader, HasACellForEachListColumn) {
    const ColumnHeader header = columnHeader(sample(), "s");
    EXPECT_EQ(header.html, std::string(layout) +
                               "<tr><td class=tableheader nowrap>Plain text</td>"
                               "<td class=tableheader nowrap>Both</td>"
                               "<td class=tableheader nowrap></td>"
                               "<td class=tableheader nowrap></td>"
                               "<td class=tableheader nowrap></td></tr>");
    EXPECT_EQ(header.columns, 5);
}

TEST(ColumnHeader, IsLayoutAndEmptyRowWithoutListColumns) {
    for (const std::string_view section : {"hidden", "unknown"}) {
        const ColumnHeader header = columnHeader(sample(), section);
        EXPECT_EQ(header.html, std::string(layout) + "<tr></tr>");
        EXPECT_EQ(header.columns, 0);
    }
}

struct CellCase {
    std::string_view field;
    std::string_view value;
    std::string_view html;
};

TEST(ListCell, FollowsTheFieldsProperties) {
    const FieldMapper mapper = sample();
    for (const CellCase& row : std::initializer_list<CellCase>{
             {"Plain", "a<b>&\"", "<td align=center>&nbsp;a<b>&\"</td>"},
             {"Plain", "", "<td align=center>&nbsp;</td>"},
             {"Both", "x", "<td align=center>&nbsp;x</td>"},
             {"Form", "x", ""},
             {"Unknown", "x", ""},
             {"Code", "1", "<td>&nbsp;One</td>"},
             {"Code", "2", "<td>&nbsp;</td>"},
             {"Link", "1001",
              "<td align=center>&nbsp;<a href=javascript:hyperlink(\"Link\",\"1001\",\"order\")>"
              "1001</a></td>"},
             {"Stamp", "20021115 1030", "<td align=center>&nbsp;11/15/2002 1030</td>"},
             {"Stamp", "2002", "<td align=center>&nbsp;//2002 </td>"},
             {"Stamp", "", "<td align=center>&nbsp;</td>"},
         }) {
        auto record = xml::Document::parse("<r/>").value();
        const xml::Node field = record.root().append_child(std::string(row.field).c_str());
        xml::setText(field, row.value);
        std::string html = "<tr>";
        appendListCells(html, mapper, "s", record.root(), "order");
        EXPECT_EQ(html, "<tr>" + std::string(row.html)) << row.field;
    }
}

}  // namespace
}  // namespace tandril::mapper
