#include "mapper/field_mapper.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tandril::mapper {
namespace {

FieldMapper mapperOf(std::string_view text) {
    auto document = xml::Document::parse(text);
    if (!document) {
        throw std::invalid_argument(std::string(text));
    }
    return FieldMapper(std::move(*document));
}

TEST(FieldMapper, ReadsTheSevenAttributes) {
    const FieldMapper mapper = mapperOf(
        "<m><s><F LABEL='L' DATATYPE='u' MODIFIABLE='True' UINTERFACE='3' ZOOM='True' "
        "HYPERLINK='True' NEW='True'/><G MODIFIABLE='true' ZOOM='False'/></s></m>");
    const FieldProperties f = mapper.properties("s", "F");
    EXPECT_EQ(f.label, "L");
    EXPECT_EQ(f.dataType, "u");
    EXPECT_TRUE(f.isModifiable && f.hasZoom && f.hasHyperlink && f.isNew);
    EXPECT_TRUE(f.isListColumn() && f.isFormRow());
    const FieldProperties g = mapper.properties("s", "G");
    EXPECT_EQ(g.label, "");
    EXPECT_FALSE(g.isModifiable || g.hasZoom || g.hasHyperlink || g.isNew);
    EXPECT_FALSE(g.isListColumn() || g.isFormRow());
}

TEST(FieldMapper, ShowsFieldsByTheirInterfaceCode) {
    const FieldMapper mapper =
        mapperOf("<m><s><A UINTERFACE='1'/><B UINTERFACE='2'/><C UINTERFACE='4'/></s></m>");
    EXPECT_TRUE(mapper.properties("s", "A").isListColumn());
    EXPECT_FALSE(mapper.properties("s", "A").isFormRow());
    EXPECT_FALSE(mapper.properties("s", "B").isListColumn());
    EXPECT_TRUE(mapper.properties("s", "B").isFormRow());
    EXPECT_FALSE(mapper.properties("s", "C").isListColumn() ||
                 mapper.properties("s", "C").isFormRow());
}

TEST(FieldMapper, LabelsAnUnknownFieldByItsNameAndLetsItBeModified) {
    const FieldProperties unknown = mapperOf("<m><s/></m>").properties("s", "Nowhere");
    EXPECT_EQ(unknown.label, "Nowhere");
    EXPECT_TRUE(unknown.isModifiable);
    EXPECT_EQ(unknown.userInterface, "");
}

TEST(FieldMapper, TakesTheFirstFieldOfAPathAnywhere) {
    const FieldMapper mapper =
        mapperOf("<m><x><s><F LABEL='first'/></s></x><s><F LABEL='second'/><G LABEL='g'/></s></m>");
    EXPECT_EQ(mapper.properties("s", "F").label, "first");
    EXPECT_EQ(mapper.properties("s", "G").label, "g");
    EXPECT_EQ(mapper.fieldNames("s"), (std::vector<std::string_view>{"F"}));
    EXPECT_TRUE(mapper.fieldNames("nowhere").empty());
}

TEST(FieldMapper, TakesTheFirstTextOfACode) {
    const FieldMapper mapper = mapperOf(
        "<m><I18N><T ID='SLBEU0001' DESCRIPTION='one'/><T ID='SLBEU0001' DESCRIPTION='two'/>"
        "<T DESCRIPTION='none'/><T ID='SLBEU0002'/></I18N>"
        "<I18N><T ID='SLBEU0003' DESCRIPTION='three'/></I18N></m>");
    // However often it is asked.
    for (int times = 0; times < 3; ++times) {
        EXPECT_EQ(mapper.text("SLBEU0001"), "one");
        EXPECT_EQ(mapper.text("SLBEU0002"), "");
        EXPECT_EQ(mapper.text("SLBEU0003"), std::nullopt);
        EXPECT_EQ(mapper.text("slbeu0001"), std::nullopt);
        EXPECT_EQ(mapper.text(""), std::nullopt);
    }
}

TEST(FieldMapper, FindsTheValueListAmongElementsOfTheFieldsName) {
    const FieldMapper mapper = mapperOf(
        "<m><s><Status LABEL='S'/></s><Status><v/><v Id='15' Value='open'/><v Id='20'/>"
        "<v Id='15' Value='again'/></Status><Status><v Id='1' Value='late'/></Status></m>");
    const auto entries = mapper.valueList("Status");
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].id, "15");
    EXPECT_EQ(entries[0].value, "open");
    EXPECT_EQ(entries[1].value, "");
    EXPECT_EQ(mapper.codeText("Status", "15"), "open");
    EXPECT_EQ(mapper.codeText("Status", "1"), std::nullopt);
    EXPECT_TRUE(mapper.valueList("Other").empty());
}

TEST(FieldMapper, TakesTheOuterOfNestedValueLists) {
    const FieldMapper mapper =
        mapperOf("<m><S><S><v Id='1' Value='inner'/></S><v Id='1' Value='outer'/></S></m>");
    EXPECT_EQ(mapper.codeText("S", "1"), "outer");
}

TEST(FieldMapper, KnowsNothingWhenBlank) {
    const FieldMapper blank = FieldMapper::blank();
    EXPECT_EQ(blank.properties("s", "F").label, "F");
    EXPECT_EQ(blank.text("SLBEU0260"), std::nullopt);
    EXPECT_TRUE(blank.listed("s").empty());
}

}  // namespace
}  // namespace tandril::mapper
