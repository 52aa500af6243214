#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "component/workstation.h"

namespace tandril::test {
namespace {

constexpr std::string_view mapperText =
    "<m><ccsocservclabr><Hours LABEL='Hours' UINTERFACE='1'/></ccsocservclabr>"
    "<I18N><T ID='SLBEU0260' DESCRIPTION='no store'/><T ID='SLBEU0261' DESCRIPTION='no mapper'/>"
    "<T ID='SLBEU0323' DESCRIPTION='no record'/></I18N></m>";

constexpr std::string_view storeText =
    "<harbrook><ccsocservcordr><record ServiceOrder='A1' State='O'><S>15</S></record>"
    "</ccsocservcordr><ccsocservcactv><ServiceOrder ID='A1'><a Activity='10' State='O'><S>15</S>"
    "<ActivityDescription>Check pump</ActivityDescription></a></ServiceOrder></ccsocservcactv>"
    "<ccsocservcmatl/><ccsocservclabr><ServiceOrder ID='' Activity=''>"
    "<l LineNumber='5' State='O'/></ServiceOrder></ccsocservclabr><ccsocservcothr/>"
    "<ccsocservchra/></harbrook>";

struct FormCalls : testing::Test, Workstation {
    FormCalls() {
        client.Initialize();
        putMapper(mapperText);
        putStore(storeText);
        client.Set_Mode("Offline");
    }

    void putError(std::string_view text) {
        machine.registry.setText(hklm, settingsKey, "Error", text);
        machine.registry.flush(platform::Durability::Durable);
    }
    std::string headings(std::int16_t& columns) {
        return client.getColumnHeadingsForHRA(columns, "ccsocservclabr");
    }
    bool shows(const std::string& html, std::string_view part) {
        return html.find(part) != std::string::npos;
    }
};

struct FormMethod {
    std::string_view name;
    std::function<std::string(Client20&)> call;
};

const std::vector<FormMethod> methodsOfTheMapper = {
    {"CreateForm", [](Client20& c) { return c.CreateForm("1", "", ""); }},
    {"CreateForm of no kind", [](Client20& c) { return c.CreateForm("9", "", ""); }},
    {"NewObject", [](Client20& c) { return c.NewObject("2", "", ""); }},
    {"NewObject of another kind", [](Client20& c) { return c.NewObject("1", "", ""); }},
    {"CreateFormforHra", [](Client20& c) { return c.CreateFormforHra("", "", ""); }},
    {"GetDetails", [](Client20& c) { return c.GetDetails("1", "A1", "", "", "", 0); }},
    {"GetDetailsForHRA", [](Client20& c) { return c.GetDetailsForHRA("", "", "", "5", "", 0); }},
};

const std::vector<FormMethod> detailMethods = {
    {"GetDetails", [](Client20& c) { return c.GetDetails("1", "A1", "", "", "", 0); }},
    {"GetDetails of no kind", [](Client20& c) { return c.GetDetails("9", "A1", "", "", "", 0); }},
    {"GetDetailsForHRA", [](Client20& c) { return c.GetDetailsForHRA("", "", "", "5", "", 0); }},
};

TEST_F(FormCalls, ErrorReadsOneAfterSuccess) {
    for (const FormMethod& method : methodsOfTheMapper) {
        putError("old");
        method.call(client);
        EXPECT_EQ(setting("Error"), "1") << method.name;
    }
    for (const auto& call : std::vector<std::function<std::string(Client20&)>>{
             [](Client20& c) { return c.CreateMaterialForm(); },
             [](Client20& c) { return c.CreateOrderDropDown(); },
             [](Client20& c) { return c.CreateActivityDropDown("A1"); }}) {
        putError("old");
        EXPECT_NE(call(client), "");
        EXPECT_EQ(setting("Error"), "1");
    }
}

TEST_F(FormCalls, WithoutFieldMapperTheCodeIsTheErrorAndNoNumberIsDrawn) {
    machine.files.put(paths::fieldMapper, "<not xml");
    for (const FormMethod& method : methodsOfTheMapper) {
        EXPECT_EQ(method.call(client), "") << method.name;
        EXPECT_EQ(setting("Error"), "SLBEU0261") << method.name;
    }
    EXPECT_EQ(setting("OrderId"), "1");
    EXPECT_EQ(setting("ActivityId"), "1");
    EXPECT_EQ(setting("LineId"), "1");
    EXPECT_EQ(log(), "");
}

TEST_F(FormCalls, WithoutStoreDetailsCannotBeShown) {
    machine.files.put(paths::store, "<other/>");
    for (const FormMethod& method : detailMethods) {
        EXPECT_EQ(method.call(client), "") << method.name;
        EXPECT_EQ(setting("Error"), "no store") << method.name;
    }
    EXPECT_EQ(log(), "");
}

TEST_F(FormCalls, StoreIsLookedForBeforeTheFieldMapper) {
    machine.files.put(paths::store, "<other/>");
    machine.files.put(paths::fieldMapper, "<not xml");
    EXPECT_EQ(client.GetDetails("1", "A1", "", "", "", 0), "");
    EXPECT_EQ(setting("Error"), "SLBEU0260");
}

TEST_F(FormCalls, RecordThatIsNotThereIsAnError) {
    EXPECT_EQ(client.GetDetails("1", "A2", "", "", "", 0), "");
    EXPECT_EQ(setting("Error"), "no record");
    EXPECT_EQ(client.GetDetailsForHRA("4", "A1", "10", "5", "", 0), "");
    EXPECT_EQ(setting("Error"), "no record");
    EXPECT_EQ(log(), "");
}

TEST_F(FormCalls, DetailsOfAnUnknownKindAreAnEmptyPanel) {
    const std::string html = client.GetDetails("9", "A1", "", "", "", 0);
    EXPECT_TRUE(shows(html, "<strong></strong>")) << html;
    EXPECT_TRUE(html.ends_with("</td></tr></table></td></tr></table>")) << html;
    EXPECT_EQ(setting("Error"), "1");
}

TEST_F(FormCalls, KeyPartsThatAnOrderLacksAreIgnored) {
    const std::string html = client.GetDetails("1", "A1", "10", "5", "<x/>", 0);
    EXPECT_TRUE(shows(html, "<form name=order_A1>")) << html;
    EXPECT_TRUE(shows(html, "saveObject(\"order\",\"A1\",\"\",\"\",\"Modify\")")) << html;
}

TEST_F(FormCalls, RegistrationIsFoundWhateverTheObjectSays) {
    for (const std::string object : {"", "1", "4"}) {
        EXPECT_TRUE(
            shows(client.GetDetailsForHRA(object, "", "", "5", "", 0), "<form name=hra___5>"));
    }
}

TEST_F(FormCalls, ErrorCorrectionOpensAClosedRecord) {
    putStore(
        "<harbrook><ccsocservcordr><record ServiceOrder='A1' State='O'><S>35</S></record>"
        "</ccsocservcordr></harbrook>");
    EXPECT_FALSE(shows(client.GetDetails("1", "A1", "", "", "", 0), "btnSave"));
    EXPECT_FALSE(shows(client.GetDetails("1", "A1", "", "", "", 2), "btnSave"));
    EXPECT_FALSE(shows(client.GetDetails("1", "A1", "", "", "", -1), "btnSave"));
    EXPECT_TRUE(shows(client.GetDetails("1", "A1", "", "", "", 1), "btnSave"));
}

TEST_F(FormCalls, EachFormDrawsItsNumber) {
    EXPECT_TRUE(shows(client.CreateForm("1", "", ""), "<form name=order__1>"));
    EXPECT_TRUE(shows(client.CreateForm("1", "", ""), "<form name=order__2>"));
    EXPECT_TRUE(shows(client.CreateForm("2", "A1", ""), "<form name=activity_A1__1>"));
    EXPECT_TRUE(shows(client.NewObject("2", "A1", ""), "<form name=activity__2>"));
    EXPECT_TRUE(shows(client.CreateForm("3", "A1", "10"), "<form name=material_A1_10__1>"));
    EXPECT_TRUE(shows(client.CreateForm("4", "A1", "10"), "<form name=labor_A1_10__2>"));
    EXPECT_TRUE(shows(client.CreateForm("5", "A1", "10"), "<form name=other_A1_10__3>"));
    EXPECT_TRUE(shows(client.CreateMaterialForm(), "<form name=material__4>"));
    EXPECT_TRUE(shows(client.CreateFormforHra("4", "A1", "10"), "<form name=hra__5>"));
    EXPECT_EQ(setting("OrderId"), "3");
    EXPECT_EQ(setting("ActivityId"), "3");
    EXPECT_EQ(setting("LineId"), "6");
}

TEST_F(FormCalls, KindThatCannotBeCreatedDrawsNoNumber) {
    EXPECT_EQ(client.CreateForm("9", "A1", "10"), "");
    EXPECT_EQ(client.CreateForm("", "A1", "10"), "");
    EXPECT_EQ(client.NewObject("1", "A1", "10"), "");
    EXPECT_EQ(setting("Error"), "1");
    EXPECT_EQ(setting("OrderId") + setting("ActivityId") + setting("LineId"), "111");
}

TEST_F(FormCalls, NewLineShowsTheActivitysDescription) {
    putMapper(
        "<m><ccsocservcmatl><ActivityDescription LABEL='Text' DATATYPE='s' NEW='True'/>"
        "</ccsocservcmatl></m>");
    EXPECT_TRUE(shows(client.CreateForm("3", "A1", "10"), "<td>Check pump</td></tr>"));
    EXPECT_TRUE(shows(client.CreateForm("3", "A1", "20"), "<td></td></tr>"));
    machine.files.put(paths::store, "");
    EXPECT_TRUE(shows(client.CreateForm("3", "A1", "10"), "<td></td></tr>"));
    EXPECT_EQ(setting("Error"), "1");
}

TEST_F(FormCalls, NewActivityWithoutStoreShowsTheErrorInPlaceOfTheOrders) {
    machine.files.put(paths::store, "");
    const std::string html = client.NewObject("2", "", "");
    EXPECT_TRUE(shows(html, "</td><td>&nbsp;_1</td></tr>no store<tr>")) << html;
    EXPECT_EQ(setting("Error"), "no store");
    EXPECT_EQ(log(), "");
}

TEST_F(FormCalls, MaterialFormWithoutFieldMapperSaysSoInItsOwnWords) {
    machine.files.put(paths::fieldMapper, "");
    EXPECT_EQ(client.CreateMaterialForm(), "Unable to load Harbrook Style Sheet");
    EXPECT_EQ(setting("Error"), "Unable to load Harbrook Style Sheet");
    EXPECT_EQ(setting("LineId"), "1");
}

TEST_F(FormCalls, DropDownsReadTheStoreOnly) {
    machine.files.put(paths::fieldMapper, "");
    EXPECT_EQ(client.CreateOrderDropDown(), "<OPTION value=A1>A1</OPTION>");
    EXPECT_EQ(client.CreateActivityDropDown("A1"), "<OPTION value=10>A1 - 10</OPTION>");
    EXPECT_EQ(client.CreateActivityDropDown("A2"), "");
}

TEST_F(FormCalls, DropDownsWithoutStoreReturnTheError) {
    machine.files.put(paths::store, "");
    EXPECT_EQ(client.CreateOrderDropDown(), "no store");
    EXPECT_EQ(setting("Error"), "no store");
    EXPECT_EQ(client.CreateActivityDropDown("A1"), "no store");
    EXPECT_EQ(setting("Error"), "no store");
    EXPECT_EQ(log(), "");
}

TEST_F(FormCalls, HeadingsCountTheMappedColumns) {
    std::int16_t columns = 7;
    EXPECT_TRUE(shows(headings(columns), ">Hours</td>"));
    EXPECT_EQ(columns, 1);
    EXPECT_TRUE(shows(client.getColumnHeadingsForHRA(columns, "none"), "Registration Date"));
    EXPECT_EQ(columns, 0);
}

TEST_F(FormCalls, HeadingsWithoutFieldMapperLeaveTheCountAlone) {
    machine.files.put(paths::fieldMapper, "");
    std::int16_t columns = 7;
    EXPECT_EQ(headings(columns), "");
    EXPECT_EQ(columns, 7);
    EXPECT_EQ(setting("Error"), "SLBEU0261");
}

TEST_F(FormCalls, CountersGoOnPastThirtyTwoThousand) {
    machine.registry.setNumber(hklm, settingsKey, "LineId", 40000);
    machine.registry.flush(platform::Durability::Durable);
    EXPECT_TRUE(shows(client.CreateFormforHra("", "", ""), "<form name=hra__40000>"));
    EXPECT_EQ(setting("LineId"), "40001");
}

}  // namespace
}  // namespace tandril::test
