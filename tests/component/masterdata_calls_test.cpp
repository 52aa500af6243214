// The methods of the master data: what they do with the settings, the connection and the error
// text. Their windows and statements are tested with the layer that makes them.
#include <gmock/gmock.h>

#include "component/workstation.h"

namespace tandril::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view filePath = "C:\\Vorn Tandril\\MasterData\\Parts.mdb";
constexpr const char* deletion =
    "<HBMasterData COMP='1'><UNITS><r STATUS='D' ID='h'/></UNITS></HBMasterData>";

// A workstation that was initialised, with a current database.
struct MasterDataWorkstation : Workstation {
    MasterDataWorkstation() {
        client.Initialize();
        std::string name = "Parts";
        client.SetCurrentmdb(name);
        machine.files.put(filePath, "");
        machine.database.answer("SELECT * FROM UNITS", {{"COMP", "CUNI"}, {{"1", "h"}}});
        machine.database.answer("SELECT * FROM UNITS WHERE CUNI = 'h'",
                                {{"COMP", "CUNI"}, {{"1", "h"}}});
    }
    std::vector<std::string>& statements() { return machine.database.statements; }
};

TEST(OpenDataBase, OpensTheDataSourceOnce) {
    MasterDataWorkstation station;
    EXPECT_EQ(station.client.OpenDataBase().text, std::nullopt);
    EXPECT_THAT(station.machine.database.opened, ElementsAre("Tandril Master Data"));
    EXPECT_EQ(station.machine.database.openConnections, 1);
    station.client.OpenDataBase();
    EXPECT_EQ(station.machine.database.openConnections, 1);
    EXPECT_EQ(station.machine.database.opened.size(), 2U);
}

TEST(OpenDataBase, ThatFailsLeavesTheConnectionClosed) {
    MasterDataWorkstation station;
    station.client.OpenDataBase();
    station.machine.database.failOpen("gone");
    EXPECT_THROW(station.client.OpenDataBase(), Fault);
    EXPECT_EQ(station.machine.database.openConnections, 0);
    EXPECT_THROW(station.client.MasterData("UNIT"), Fault);
}

TEST(CloseDataBase, ClosesWhatIsOpen) {
    MasterDataWorkstation station;
    EXPECT_EQ(station.client.CloseDataBase().text, std::nullopt);
    station.client.OpenDataBase();
    station.client.CloseDataBase();
    EXPECT_EQ(station.machine.database.openConnections, 0);
    EXPECT_THROW(station.client.MasterData("UNIT"), Fault);
}

TEST(MasterDataMethods, ShareTheConnectionOfAllObjects) {
    MasterDataWorkstation station;
    station.client.OpenDataBase();
    Client20 other(station.module);
    EXPECT_THAT(other.MasterData("UNIT"), HasSubstr("<td nowrap>&nbsp;h</td>"));
    EXPECT_THAT(other.HyperLinkAndZoom(1, "Unit", "h", "order"), HasSubstr("<td>h</td>"));
    EXPECT_EQ(station.machine.database.opened.size(), 1U);
}

TEST(MasterDataMethods, LeaveTheErrorTextAndTheLogAlone) {
    MasterDataWorkstation station;
    station.client.ListOrders();
    const std::string error = station.setting("Error");
    const std::string log = station.log();
    EXPECT_NE(error, "1");
    station.client.OpenDataBase();
    station.client.MasterData("UNIT");
    station.client.MasterData("none");
    station.client.HyperLinkAndZoom(0, "Unit", "", "order");
    station.client.ExplodeZip("Master");
    station.client.Synchronize_MasterData("no XML");
    station.client.Synchronize_MasterData(deletion);
    station.client.CloseDataBase();
    EXPECT_THROW(station.client.MasterData("UNIT"), Fault);
    EXPECT_EQ(station.setting("Error"), error);
    EXPECT_EQ(station.log(), log);
}

TEST(MasterDataMethods, NeedTheFileOfTheCurrentDatabase) {
    MasterDataWorkstation station;
    station.client.OpenDataBase();
    std::string name = "Others";
    station.client.SetCurrentmdb(name);
    EXPECT_EQ(station.client.MasterData("UNIT"), "");
    EXPECT_EQ(station.client.HyperLinkAndZoom(0, "Unit", "", "order"),
              "<table width=100% border=0 cellspacing=0 cellpadding=0><tr><td></td></tr></table>");
    EXPECT_EQ(station.client.Synchronize_MasterData(deletion), "SUCCESSFUL");
    EXPECT_THAT(station.statements(), IsEmpty());
}

TEST(MasterDataMethods, IgnoreBlanksAroundTheCurrentDatabase) {
    MasterDataWorkstation station;
    std::string name = "  Parts ";
    station.client.SetCurrentmdb(name);
    station.client.OpenDataBase();
    EXPECT_THAT(station.client.MasterData("UNIT"), HasSubstr("&nbsp;h"));
}

TEST(HyperLinkAndZoom, IsAHyperlinkInModeOneOnly) {
    MasterDataWorkstation station;
    station.client.OpenDataBase();
    for (const std::int16_t mode : std::initializer_list<std::int16_t>{0, 2, -1, 32767}) {
        EXPECT_THAT(station.client.HyperLinkAndZoom(mode, "Unit", "h", "order"),
                    HasSubstr("FillValues(\"h\",\"CUNI\")"));
    }
    EXPECT_THAT(station.client.HyperLinkAndZoom(1, "Unit", "h", "order"),
                Not(HasSubstr("FillValues")));
}

TEST(HyperLinkAndZoom, UsesOneContainerForEveryForm) {
    MasterDataWorkstation station;
    station.client.OpenDataBase();
    for (const std::string form : {"order", "activity", "material", "hra", ""}) {
        EXPECT_THAT(station.client.HyperLinkAndZoom(0, "Unit", "", form),
                    HasSubstr("winclose(\"divZoomHype\")"));
    }
}

TEST(SynchronizeMasterData, UsesAConnectionOfItsOwn) {
    MasterDataWorkstation station;
    EXPECT_EQ(station.client.Synchronize_MasterData(deletion), "SUCCESSFUL");
    EXPECT_THAT(
        station.statements(),
        ElementsAre("BEGIN", "DELETE FROM UNITS WHERE  COMP = '1' and CUNI = 'h'", "COMMIT"));
    EXPECT_EQ(station.machine.database.openConnections, 0);
    EXPECT_THROW(station.client.MasterData("UNIT"), Fault);
    station.client.OpenDataBase();
    station.client.Synchronize_MasterData(deletion);
    EXPECT_EQ(station.machine.database.openConnections, 1);
}

TEST(SynchronizeMasterData, NeedsNoSettingsForWhatIsNoXml) {
    Workstation station;
    EXPECT_EQ(station.client.Synchronize_MasterData("<a"), "INVALID XML String!!");
    EXPECT_EQ(station.client.Synchronize_MasterData("<a/>"), "SUCCESSFUL");
}

TEST(ExplodeZip, StartsTheArchiveOfTheMasterDataFolder) {
    MasterDataWorkstation station;
    EXPECT_EQ(station.client.ExplodeZip("Master").text, std::nullopt);
    EXPECT_THAT(station.machine.shell.starts,
                ElementsAre(RecordingShell::Start{"C:\\Vorn Tandril\\MasterData", "Master.exe"}));
}

TEST(ExplodeZip, SaysWhatIsMissingInTheWordsOfTheFieldMapper) {
    MasterDataWorkstation station;
    station.putMapper(
        "<harbrook><I18N><a ID='SLBEU0310' DESCRIPTION='The archive '/>"
        "<a ID='SLBEU0311' DESCRIPTION='is not in '/><a ID='SLBEU0312' DESCRIPTION='Fetch it.'/>"
        "<a ID='SLBEU0313' DESCRIPTION='Archive'/></I18N></harbrook>");
    station.machine.shell.startSucceeds = false;
    station.client.ExplodeZip("Master");
    EXPECT_THAT(station.machine.shell.messages,
                ElementsAre(RecordingShell::Message{
                    "Archive",
                    "The archive Master.exe\r\nis not in C:\\Vorn Tandril\\MasterData\\  \r\n\r\n"
                    "Fetch it."}));
}

}  // namespace
}  // namespace tandril::test
