#include <gtest/gtest.h>

#include "component/workstation.h"
#include "store/sections.h"

namespace tandril::test {
namespace {

TEST(Initialize, LaysOutANewMachine) {
    Workstation w;
    EXPECT_EQ(w.client.Initialize().text, "");
    EXPECT_TRUE(w.machine.files.folderExists(paths::installFolder));
    EXPECT_TRUE(w.machine.files.folderExists(paths::masterDataFolder));
    EXPECT_EQ(w.machine.files.content(paths::log), "");
    EXPECT_EQ(w.machine.files.content(paths::store),
              "<harbrook><ccsocservcordr/><ccsocservcactv/><ccsocservcmatl/><ccsocservclabr/>"
              "<ccsocservcothr/><ccsocservchra/></harbrook>");
    EXPECT_EQ(w.machine.registry.dump(),
              "HKLM\\SOFTWARE\n"
              "HKLM\\SOFTWARE\\Vorn\n"
              "HKLM\\SOFTWARE\\Vorn\\Vorn Tandril\n"
              "  Currentmdb=\n"
              "  MasterDataPath=\n"
              "  OrderId=#1\n"
              "  ActivityId=#1\n"
              "  LineId=#1\n"
              "  Error=\n"
              "  Mode=Online\n"
              "  MasterData=1\n"
              "HKLM\\SOFTWARE\\ODBC\n"
              "HKLM\\SOFTWARE\\ODBC\\odbc.ini\n"
              "HKLM\\SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data\n"
              "  DBQ=C:\\Vorn Tandril\\MasterData\\\n"
              "  Description=Master Data\n"
              "  Driver=C:\\WINDOWS\\system32\\odbcjt32.dll\n"
              "  DriverId=#19\n"
              "  FIL=MS Access\n"
              "  SafeTransactions=#0\n"
              "  UID=\n"
              "HKLM\\SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data\\Engines\n"
              "HKLM\\SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data\\Engines\\Jet\n"
              "  ImplicitCommitSync=Yes\n"
              "  MaxBufferSize=#2048\n"
              "  PageTimeOut=#5\n"
              "  Threads=#3\n"
              "  UserCommitSync=Yes\n"
              "HKLM\\SOFTWARE\\ODBC\\odbc.ini\\ODBC Data Sources\n"
              "  Tandril Master Data=Microsoft Access Driver (*.mdb)\n");
}

TEST(Initialize, KeepsWhatIsThere) {
    Workstation w;
    w.client.Initialize();
    w.putStore("<harbrook><x/></harbrook>");
    w.machine.files.put(paths::log, "old\r\n");
    w.client.Set_Mode("Offline");
    const std::string before = w.machine.registry.dump();
    EXPECT_EQ(w.client.Initialize().text, "");
    EXPECT_EQ(w.machine.registry.dump(), before);
    EXPECT_EQ(w.machine.files.content(paths::store), "<harbrook><x/></harbrook>");
    EXPECT_EQ(w.log(), "old\r\n");
}

TEST(Initialize, ClearsAnOldErrorText) {
    Workstation w;
    w.client.Initialize();
    w.client.MyActivities("");
    EXPECT_EQ(w.setting("Error"), "SLBEU0261");
    w.client.Initialize();
    EXPECT_EQ(w.setting("Error"), "");
}

TEST(Initialize, PointsTheDataSourceAtTheCurrentDatabase) {
    Workstation w;
    w.client.Initialize();
    std::string name = " Parts ";
    w.client.SetCurrentmdb(name);
    w.client.Initialize();
    EXPECT_EQ(w.machine.registry.read(hklm, sourceKey, "DBQ"),
              "C:\\Vorn Tandril\\MasterData\\Parts.mdb");
}

TEST(Initialize, SetsOnlyTheFileOfAnExistingDataSource) {
    Workstation w;
    w.machine.registry.createKey(hklm, sourceKey);
    w.machine.registry.setText(hklm, sourceKey, "DBQ", "elsewhere");
    w.machine.registry.flush(platform::Durability::Durable);
    w.client.Initialize();
    EXPECT_EQ(w.machine.registry.read(hklm, sourceKey, "DBQ"), "C:\\Vorn Tandril\\MasterData\\");
    EXPECT_FALSE(w.machine.registry.read(hklm, sourceKey, "Driver"));
}

TEST(Initialize, LetsDataAccessPassWhereAHandlerIsSet) {
    Workstation w;
    constexpr std::string_view key = "SOFTWARE\\Microsoft\\DataFactory\\HandlerInfo";
    w.machine.registry.createKey(hklm, key);
    w.machine.registry.setNumber(hklm, key, "handlerRequired", 1);
    w.machine.registry.setText(hklm, key, "DefaultHandler", "MSDFMAP.Handler");
    w.machine.registry.flush(platform::Durability::Durable);
    w.client.Initialize();
    EXPECT_EQ(w.machine.registry.read(hklm, key, "handlerRequired"), "0");
    EXPECT_TRUE(w.machine.registry.isNumber(hklm, key, "handlerRequired"));
    EXPECT_EQ(w.machine.registry.read(hklm, key, "DefaultHandler"), "");
}

TEST(Initialize, NamesTheFolderWhenTheDriveIsMissing) {
    Workstation w;
    w.machine.files.removeDrive();
    EXPECT_EQ(w.client.Initialize().text, " C:\\Vorn Tandril");
    EXPECT_EQ(w.machine.registry.dump(), "");
}

TEST(Initialize, AddsAMissingMasterDataFolder) {
    Workstation w;
    w.machine.files.createFolder(paths::installFolder);
    w.client.Initialize();
    EXPECT_TRUE(w.machine.files.folderExists(paths::masterDataFolder));
}

TEST(Initialize, FaultsWhenAFolderCannotBeMade) {
    Workstation w;
    w.machine.faults.failOn(FileOperation::CreateFolder, 1);
    EXPECT_THROW(w.client.Initialize(), Fault);
    EXPECT_EQ(w.machine.registry.dump(), "");
}

}  // namespace
}  // namespace tandril::test
