// How the check of records reaches the master data.

#include <gtest/gtest.h>

#include "component/workstation.h"

namespace tandril::test {
namespace {

constexpr std::string_view download =
    "<harbrook><ccsocservcordr>"
    "<record ServiceOrder='1'><S>15</S><Problem>P</Problem><Solution>S</Solution></record>"
    "<record ServiceOrder='2'><S>15</S><Problem>P</Problem></record>"
    "</ccsocservcordr></harbrook>";

struct LookUps : testing::Test {
    LookUps() {
        w.client.Initialize();
        std::string name = "Parts";
        w.client.SetCurrentmdb(name);
    }
    Workstation w;
};

TEST_F(LookUps, AskNothingWithoutADatabaseFile) {
    w.client.DownloadXml(std::string(download));
    EXPECT_TRUE(w.machine.database.opened.empty());
}

TEST_F(LookUps, ShareOneConnectionThatIsClosedAgain) {
    w.machine.files.put("C:\\Vorn Tandril\\MasterData\\Parts.mdb", "x");
    w.client.DownloadXml(std::string(download));
    EXPECT_EQ(w.machine.database.opened.size(), 1U);
    EXPECT_EQ(w.machine.database.statements.size(), 3U);
    EXPECT_EQ(w.machine.database.openConnections, 0);
}

TEST_F(LookUps, TryADatabaseThatDoesNotOpenOnce) {
    w.machine.files.put("C:\\Vorn Tandril\\MasterData\\Parts.mdb", "x");
    w.machine.database.failOpen("no driver");
    w.client.DownloadXml(std::string(download));
    EXPECT_EQ(w.machine.database.opened.size(), 1U);
    const std::string fault = "Error =   no driver\r\n";
    EXPECT_EQ(w.log(), logHeader("Download XML") + fault + fault + fault +
                           "iXml =   " + std::string(download) + "\r\n");
}

}  // namespace
}  // namespace tandril::test
