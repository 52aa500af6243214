#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "component/workstation.h"

namespace tandril::test {
namespace {

constexpr std::string_view mapperText =
    "<m><ccsocservcactv><F LABEL='F' UINTERFACE='1'/></ccsocservcactv>"
    "<I18N><T ID='SLBEU0260' DESCRIPTION='no store'/><T ID='SLBEU0261' DESCRIPTION='no mapper'/>"
    "<T ID='SLBEU0262' DESCRIPTION='no activities'/><T ID='SLBEU0263' DESCRIPTION='no agenda'/>"
    "<T ID='SLBEU0300' DESCRIPTION='bad mode'/><T ID='SLBEU0301' DESCRIPTION='no lines'/>"
    "<T ID='SLBEU0303' DESCRIPTION='no orders'/></I18N></m>";

struct ListMethod {
    std::string_view name;
    std::function<std::string(Client20&)> call;
    std::string_view emptyText;
    std::string_view action;       // in the log
    std::string_view emptyAction;  // in the log, when nothing is to be shown
    bool needsErrorText;           // shows nothing without the setting
};

std::vector<ListMethod> listMethods() {
    constexpr std::string_view activities = "My Activities";
    constexpr std::string_view orders = "List Orders";
    constexpr std::string_view view = "View Orders";
    constexpr std::string_view lines = "List Cost Lines";
    return {
        {"MyActivities", [](Client20& c) { return c.MyActivities("x"); }, "no activities",
         activities, activities, false},
        {"completedAgenda", [](Client20& c) { return c.completedAgenda(); }, "no agenda",
         activities, activities, false},
        {"canceledAgenda", [](Client20& c) { return c.canceledAgenda(); }, "no agenda", activities,
         activities, false},
        {"ViewActivities_W", [](Client20& c) { return c.ViewActivities_W(); }, "no activities",
         activities, activities, false},
        {"ViewActivities_SI", [](Client20& c) { return c.ViewActivities_SI(); }, "no activities",
         activities, activities, false},
        {"ListOrders", [](Client20& c) { return c.ListOrders(); }, "no orders", orders, orders,
         true},
        {"ViewOrders_W", [](Client20& c) { return c.ViewOrders_W(); }, "no orders", orders, view,
         true},
        {"ViewOrders_SI", [](Client20& c) { return c.ViewOrders_SI(); }, "no orders", orders, view,
         true},
        {"ListCostLines", [](Client20& c) { return c.ListCostLines("Labor", "1", "2"); },
         "no lines", lines, lines, true},
        {"ViewCostLines_W", [](Client20& c) { return c.ViewCostLines_W("Other"); }, "no lines",
         lines, lines, true},
        {"ViewCostLines_SI", [](Client20& c) { return c.ViewCostLines_SI("Material"); }, "no lines",
         lines, lines, true},
        {"ListHRALines", [](Client20& c) { return c.ListHRALines("", "", ""); }, "no lines", lines,
         lines, true},
        {"ViewHra_W", [](Client20& c) { return c.ViewHra_W(); }, "no lines", lines, lines, true},
        {"ViewHra_SI", [](Client20& c) { return c.ViewHra_SI(); }, "no lines", lines, lines, true},
    };
}

std::string failure(std::string_view action, std::string_view text) {
    return logHeader(action) + "Error =   " + std::string(text) + "\r\n";
}

TEST(Lists, TellThatThereIsNothingToShow) {
    for (const ListMethod& method : listMethods()) {
        SCOPED_TRACE(method.name);
        Workstation w;
        w.client.Initialize();
        w.putMapper(mapperText);
        EXPECT_EQ(method.call(w.client), "");
        EXPECT_EQ(w.setting("Error"), method.emptyText);
        EXPECT_EQ(w.log(), failure(method.emptyAction, method.emptyText));
    }
}

TEST(Lists, TellThatTheStoreCannotBeLoaded) {
    for (const ListMethod& method : listMethods()) {
        SCOPED_TRACE(method.name);
        for (const std::string_view store : {"<harbrook>", "<other/>", ""}) {
            Workstation w;
            w.client.Initialize();
            w.putMapper(mapperText);
            w.putStore(store);
            EXPECT_EQ(method.call(w.client), "");
            EXPECT_EQ(w.setting("Error"), "no store");
            EXPECT_EQ(w.log(), failure(method.action, "no store"));
            EXPECT_EQ(w.machine.files.content(paths::store), store);
        }
    }
}

TEST(Lists, TellTheCodeWhenTheMapperCannotBeLoaded) {
    for (const ListMethod& method : listMethods()) {
        SCOPED_TRACE(method.name);
        Workstation w;
        w.client.Initialize();
        EXPECT_EQ(method.call(w.client), "");
        EXPECT_EQ(w.setting("Error"), "SLBEU0261");
        EXPECT_EQ(w.log(), failure(method.action, "SLBEU0261"));
    }
}

TEST(Lists, SetTheErrorTextWhereItExistsOnly) {
    constexpr std::string_view order =
        "<harbrook><ccsocservcordr><record ServiceOrder='1' State='O'><S>15</S></record>"
        "<record ServiceOrder='2' State='NU'/></ccsocservcordr></harbrook>";
    for (const ListMethod& method : listMethods()) {
        SCOPED_TRACE(method.name);
        Workstation w;
        w.machine.files.put(paths::log, "");
        w.putMapper(mapperText);
        w.putStore(order);
        w.machine.registry.createKey(hklm, settingsKey);
        w.machine.registry.setText(hklm, settingsKey, "Mode", "Online");
        w.machine.registry.flush(platform::Durability::Durable);
        EXPECT_EQ(method.call(w.client), "");
        EXPECT_EQ(w.setting("Error"), "(none)");
        EXPECT_EQ(w.log().empty(), method.needsErrorText);
    }
}

TEST(Lists, FaultWithoutALogAfterTheErrorTextIsSet) {
    for (const ListMethod& method : listMethods()) {
        SCOPED_TRACE(method.name);
        Workstation w;
        w.client.Initialize();
        w.putMapper(mapperText);
        w.machine.files.remove(paths::log);
        EXPECT_THROW(method.call(w.client), Fault);
        EXPECT_EQ(w.setting("Error"), method.emptyText);
    }
}

TEST(Lists, ReadEachFileOnceAndWriteNone) {
    for (const ListMethod& method : listMethods()) {
        SCOPED_TRACE(method.name);
        Workstation w;
        w.client.Initialize();
        w.putMapper(mapperText);
        w.machine.files.forgetCalls();
        method.call(w.client);
        EXPECT_EQ(w.machine.files.count(FileOperation::Read, paths::store), 1);
        EXPECT_EQ(w.machine.files.count(FileOperation::Read, paths::fieldMapper), 1);
        EXPECT_EQ(w.machine.files.count(FileOperation::Replace), 0);
    }
}

TEST(CostLists, WantAKnownMode) {
    for (const ListMethod& method : listMethods()) {
        if (method.action != "List Cost Lines") {
            continue;
        }
        SCOPED_TRACE(method.name);
        Workstation w;
        w.client.Initialize();
        w.putMapper(mapperText);
        w.client.Set_Mode("Away");
        EXPECT_EQ(method.call(w.client), "");
        EXPECT_EQ(w.setting("Error"), "bad mode");
        EXPECT_EQ(w.log(), failure("List Cost Lines", "bad mode") + " Mode =   Away\r\n");
    }
}

TEST(Lists, LeaveTheErrorTextAtOneAfterSuccess) {
    Workstation w;
    w.client.Initialize();
    w.putMapper(mapperText);
    w.putStore(
        "<harbrook><ccsocservcordr><record ServiceOrder='1'><S>15</S></record></ccsocservcordr>"
        "<ccsocservcactv><ServiceOrder ID='1'/></ccsocservcactv></harbrook>");
    EXPECT_NE(w.client.MyActivities("a").find("<tr class=orderrow>"), std::string::npos);
    EXPECT_EQ(w.client.MyActivities("a"), w.client.MyActivities("b"));
    EXPECT_EQ(w.setting("Error"), "1");
    EXPECT_EQ(w.log(), "");
}

TEST(BuildCostLines, SeesTheStoreOfTheCallBefore) {
    Workstation w;
    w.client.Initialize();
    w.putMapper(mapperText);
    w.putStore(
        "<harbrook><ccsocservcmatl><ServiceOrder ID='1' Activity='10'><l LineNumber='5'/>"
        "</ServiceOrder></ccsocservcmatl></harbrook>");
    const std::string none =
        "<table border=0 cellspacing=1 cellpadding=0 width=100%><tr class=tablerows>"
        "<td colspan=0></td></tr></table>";
    EXPECT_EQ(w.client.BuildCostLines("1", "1", "10"), none);
    w.client.ListOrders();
    w.machine.files.remove(paths::store);
    EXPECT_NE(w.client.BuildCostLines("1", "1", "10").find("\"1\",\"10\",\"5\""),
              std::string::npos);
    w.client.ListOrders();
    EXPECT_EQ(w.client.BuildCostLines("1", "1", "10"), none);
}

}  // namespace
}  // namespace tandril::test
