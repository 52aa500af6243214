#include <gtest/gtest.h>

#include "component/workstation.h"

namespace tandril::test {
namespace {

// A component that was initialised.
struct Environment : testing::Test {
    Environment() { w.client.Initialize(); }
    Workstation w;
};

TEST_F(Environment, SavesThePageAndLogsIt) {
    EXPECT_EQ(w.client.SaveWebPage("<html>\xC3\xA4</html>").text, std::nullopt);
    EXPECT_EQ(w.machine.files.content(paths::page), "<html>\xC3\xA4</html>");
    EXPECT_EQ(w.log(), logHeader("Save Web Page"));
}

TEST_F(Environment, ReplacesThePageWhole) {
    w.client.SaveWebPage("long page");
    w.client.SaveWebPage("x");
    EXPECT_EQ(w.machine.files.content(paths::page), "x");
    EXPECT_EQ(w.log(), logHeader("Save Web Page") + logHeader("Save Web Page"));
}

TEST_F(Environment, FaultsWithoutALog) {
    w.machine.files.remove(paths::log);
    EXPECT_THROW(w.client.SaveWebPage("x"), Fault);
    EXPECT_FALSE(w.machine.files.fileExists(paths::log));
}

TEST_F(Environment, ReadsSettingsByTheirExactName) {
    EXPECT_EQ(w.client.GetVariable("Mode"), "Online");
    EXPECT_EQ(w.client.GetVariable("mode"), "");
    EXPECT_EQ(w.client.GetVariable("OrderId"), "1");
    EXPECT_EQ(w.client.GetVariable(""), "");
    EXPECT_EQ(w.client.GetVariable("Nothing"), "");
}

TEST_F(Environment, TellsTheCurrentDatabaseOnlyWhereThereIsOne) {
    std::string name = "Parts";
    w.client.SetCurrentmdb(name);
    EXPECT_EQ(w.client.GetVariable("Currentmdb"), "");
    w.machine.files.put("C:\\Vorn Tandril\\MasterData\\readme.txt", "");
    EXPECT_EQ(w.client.GetVariable("Currentmdb"), "");
    w.machine.files.put("C:\\Vorn Tandril\\MasterData\\Other.MDB", "");
    EXPECT_EQ(w.client.GetVariable("Currentmdb"), "Parts");
}

TEST_F(Environment, SetsTheMode) {
    EXPECT_EQ(w.client.Set_Mode("Offline").text, std::nullopt);
    EXPECT_EQ(w.setting("Mode"), "Offline");
    EXPECT_EQ(w.machine.registry.saves().back(), platform::Durability::Durable);
}

TEST_F(Environment, PointsTheDataSourceAtAFile) {
    std::string name = "New.mdb";
    w.client.SetODBCDataBase(name);
    EXPECT_EQ(w.machine.registry.read(hklm, sourceKey, "DBQ"),
              "C:\\Vorn Tandril\\MasterData\\New.mdb");
}

TEST_F(Environment, CreatesTheDownloadFolderValue) {
    constexpr std::string_view key = "Software\\Microsoft\\Internet Explorer";
    w.client.RegisterDownloadPath();
    EXPECT_EQ(w.machine.registry.read(hkcu, key, "Download Directory"),
              "C:\\Vorn Tandril\\MasterData");
}

TEST_F(Environment, SetsTheStartPageOnlyWhereThereIsOne) {
    constexpr std::string_view key = "Software\\Microsoft\\Internet Explorer\\Main";
    w.client.SetHomePage();
    EXPECT_FALSE(w.machine.registry.keyExists(hkcu, key));
    w.machine.registry.createKey(hkcu, key);
    w.machine.registry.setText(hkcu, key, "Start Page", "about:blank");
    w.machine.registry.flush(platform::Durability::Durable);
    w.client.SetHomePage();
    EXPECT_EQ(w.machine.registry.read(hkcu, key, "Start Page"), "C:\\Vorn Tandril\\harbrook.html");
}

TEST_F(Environment, TellsWhichFilesThereAre) {
    EXPECT_TRUE(w.client.LocalXmlExists());
    EXPECT_FALSE(w.client.FMapperXMLExists());
    w.client.getFMapper("<m/>", "");
    EXPECT_TRUE(w.client.FMapperXMLExists());
}

TEST_F(Environment, StoresTheFirstFieldMapperAndReplacesItOnlyOnYes) {
    w.client.getFMapper("not even XML", "No");
    EXPECT_EQ(w.machine.files.content(paths::fieldMapper), "not even XML");
    w.client.getFMapper("<m/>", "yes");
    EXPECT_EQ(w.machine.files.content(paths::fieldMapper), "not even XML");
    w.client.getFMapper("<m/>", "Yes");
    EXPECT_EQ(w.machine.files.content(paths::fieldMapper), "<m/>");
}

TEST_F(Environment, GivesFilesForAMail) {
    w.putStore("<?xml version=\"1.0\" encoding=\"UTF-8\"?><harbrook>\n <a/></harbrook>");
    w.putMapper("<m/>");
    w.machine.files.put(paths::report, "<r/>");
    w.machine.files.put(paths::log, "line\r\n");
    EXPECT_EQ(w.client.GetMailContent("Harbrook").text,
              "<?xml version=\"1.0\"?><harbrook><a/></harbrook>");
    EXPECT_EQ(w.client.GetMailContent("UploadReport").text, "<r/>");
    EXPECT_EQ(w.client.GetMailContent("StyleSheet").text, "<m/>");
    EXPECT_EQ(w.client.GetMailContent("Log").text, "line\r\n");
    EXPECT_EQ(w.client.GetMailContent("harbrook").text, std::nullopt);
}

TEST_F(Environment, GivesAnEmptyTextForAFileThatCannotBeLoaded) {
    w.putStore("<other/>");
    EXPECT_EQ(w.client.GetMailContent("Harbrook").text, "");
    EXPECT_EQ(w.client.GetMailContent("UploadReport").text, "");
    w.putMapper("<m>");
    EXPECT_EQ(w.client.GetMailContent("StyleSheet").text, "");
}

TEST_F(Environment, ResolvesMessageCodes) {
    EXPECT_EQ(w.client.GetI18NString("SLBEU0321"), "");
    w.putMapper("<m><I18N><T ID='SLBEU0321' DESCRIPTION='Start again'/></I18N></m>");
    EXPECT_EQ(w.client.GetI18NString("SLBEU0321"), "Start again");
    EXPECT_EQ(w.client.GetI18NString("slbeu0321"), "");
}

TEST_F(Environment, LeavesTheErrorTextAlone) {
    w.client.MyActivities("");
    const std::string error = w.setting("Error");
    ASSERT_EQ(error, "SLBEU0261");
    w.client.GetVariable("Mode");
    w.client.SaveWebPage("x");
    w.client.GetMailContent("Harbrook");
    w.client.Set_Mode("Online");
    EXPECT_EQ(w.client.Get_Error(), error);
}

TEST(WithoutSettings, NothingIsCreatedOrRead) {
    Workstation w;
    std::string name = "x";
    w.client.Set_Mode("Offline");
    w.client.SetCurrentmdb(name);
    w.client.SetODBCDataBase(name);
    EXPECT_EQ(w.client.Get_Error(), "");
    EXPECT_EQ(w.client.GetVariable("Mode"), "");
    EXPECT_EQ(w.machine.registry.dump(), "");
}

}  // namespace
}  // namespace tandril::test
