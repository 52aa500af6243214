// Records that the page hands in, checked against master data of every kind.
#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>

#include "component/client20.h"
#include "component/module.h"
#include "platform/machine.h"
#include "support/read_file.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* databaseFile = "Vorn Tandril/MasterData/Parts.mdb";
constexpr const char* logFile = "Vorn Tandril/log.txt";

constexpr std::string_view mapperText =
    "<m><I18N><T ID='SLBEU0373' DESCRIPTION='is unknown'/></I18N></m>";
constexpr std::string_view storeText =
    "<harbrook><ccsocservcordr><record ServiceOrder='A1' State='O'><OrderStatus>15</OrderStatus>"
    "<Problem/><ServiceItem/><Configuration>C-100</Configuration><Object/><ObjectNumber/></record>"
    "</ccsocservcordr><ccsocservcactv/><ccsocservcmatl/><ccsocservclabr/><ccsocservcothr/>"
    "<ccsocservchra/></harbrook>";

struct MasterDataCheck : testing::Test {
    MasterDataCheck() {
        client.Initialize();
        std::string name = "Parts";
        client.SetCurrentmdb(name);
        std::string file = "Parts.mdb";
        client.SetODBCDataBase(file);
        home.write("Vorn Tandril/FieldMapper.xml", mapperText);
        home.write("Vorn Tandril/Harbrook.xml", storeText);
    }

    // Makes the database a SQLite file with these statements.
    void makeDatabase(const std::vector<std::string>& statements) {
        home.write(databaseFile, "");
        const auto connection = machine->machine().database.open("Tandril Master Data");
        for (const std::string& statement : statements) {
            connection->execute(statement);
        }
    }
    void makeFullDatabase() {
        makeDatabase({"CREATE TABLE PROBLEMS (COMP TEXT, CPRL TEXT)",
                      "CREATE TABLE SERVICEITEMS (COMP TEXT, ITEM TEXT)",
                      "CREATE TABLE OBJECTS (COMP TEXT, CCFG TEXT, CROB TEXT COLLATE NOCASE, "
                      "OSEQ TEXT)",
                      "INSERT INTO PROBLEMS VALUES ('100', 'P01')",
                      "INSERT INTO PROBLEMS VALUES ('100', 'it''s')",
                      "INSERT INTO SERVICEITEMS VALUES ('100', 'FLT-200')",
                      "INSERT INTO OBJECTS VALUES ('100', 'C-100', 'OB-101', '1')"});
    }

    // What the page is told when it hands in the order with one text edited.
    std::string edit(const std::string& field, const std::string& value) {
        return client.updatexml("<harbrook><ccsocservcordr><record ServiceOrder='A1'><" + field +
                                ">" + value + "</" + field +
                                "></record></ccsocservcordr></harbrook>");
    }
    std::string log() const { return home.read(logFile); }

    TemporaryHome home;
    std::unique_ptr<platform::OwnedMachine> machine = platform::openMachine(home.path());
    Module module{machine->machine()};
    Client20 client{module};
};

TEST_F(MasterDataCheck, DatabaseSaysWhatIsKnown) {
    makeFullDatabase();
    EXPECT_EQ(edit("Problem", "P01"), "");
    EXPECT_EQ(edit("Problem", "P99"), "Problem is unknown");
    EXPECT_EQ(client.Get_Error(), "Problem is unknown");
    EXPECT_EQ(edit("ServiceItem", "FLT-200"), "");
    EXPECT_EQ(edit("ServiceItem", "P01"), "ServiceItem is unknown");
    EXPECT_EQ(edit("ObjectNumber", "1"), "");
    EXPECT_EQ(edit("ObjectNumber", "2"), "ObjectNumber is unknown");
    EXPECT_THAT(home.read("Vorn Tandril/Harbrook.xml"), Not(HasSubstr("P99")));
}

TEST_F(MasterDataCheck, ObjectComparesExactlyWhateverTheDatabaseThinks) {
    makeFullDatabase();
    EXPECT_EQ(edit("Object", "OB-101"), "");
    EXPECT_EQ(edit("Object", "ob-101"), "Object is unknown");
}

TEST_F(MasterDataCheck, OpenConnectionIsUsedAndStaysOpen) {
    makeFullDatabase();
    client.OpenDataBase();
    EXPECT_EQ(edit("Problem", "P99"), "Problem is unknown");
    EXPECT_NE(module.connection, nullptr);
    client.CloseDataBase();
    EXPECT_EQ(edit("Problem", "P98"), "Problem is unknown");
    EXPECT_EQ(module.connection, nullptr);
}

TEST_F(MasterDataCheck, WithoutDatabaseFileEverythingIsKnown) {
    EXPECT_EQ(edit("Problem", "P99"), "");
    EXPECT_EQ(edit("Object", "it's"), "");
    EXPECT_EQ(client.Get_Error(), "");
    EXPECT_EQ(log(), "");
}

TEST_F(MasterDataCheck, OpenConnectionIsNotAskedWhenTheFileIsGone) {
    makeFullDatabase();
    client.OpenDataBase();
    std::filesystem::remove(home.pathOf(databaseFile));
    EXPECT_EQ(edit("Problem", "P99"), "");
    EXPECT_EQ(log(), "");
}

TEST_F(MasterDataCheck, MissingTablePassesAndIsLogged) {
    makeDatabase({"CREATE TABLE SERVICEITEMS (COMP TEXT, ITEM TEXT)"});
    EXPECT_EQ(edit("Problem", "P99"), "");
    EXPECT_EQ(client.Get_Error(), "");
    EXPECT_THAT(log(), HasSubstr("For User Action: Update XML  ----------\r\nError =   "));
    EXPECT_THAT(log(), HasSubstr("PROBLEMS"));
    EXPECT_THAT(home.read("Vorn Tandril/Harbrook.xml"), HasSubstr("P99"));
    EXPECT_EQ(edit("ServiceItem", "P99"), "ServiceItem is unknown");
}

TEST_F(MasterDataCheck, FileThatIsNoDatabasePassesAndIsLogged) {
    home.write(databaseFile, "this is no database");
    EXPECT_EQ(edit("Problem", "P99"), "");
    EXPECT_EQ(client.Get_Error(), "");
    EXPECT_THAT(log(), HasSubstr("For User Action: Update XML  ----------\r\nError =   "));
}

TEST_F(MasterDataCheck, ReadOnlyAccessFileSaysWhatIsKnown) {
    home.write(databaseFile, readFile(TANDRIL_SAMPLES "/masterdata/tandril.mdb"));
    EXPECT_EQ(edit("Problem", "P01"), "");
    EXPECT_EQ(edit("Problem", "P99"), "Problem is unknown");
    EXPECT_EQ(edit("ServiceItem", "FLT-200"), "");
    EXPECT_EQ(edit("Object", "OB-101"), "");
    EXPECT_EQ(edit("Object", "OB-999"), "Object is unknown");
    EXPECT_EQ(edit("ObjectNumber", "1"), "");
    EXPECT_EQ(edit("ObjectNumber", "99"), "ObjectNumber is unknown");
}

TEST_F(MasterDataCheck, ReadOnlySqliteFileSaysWhatIsKnown) {
    makeFullDatabase();
    std::filesystem::permissions(home.pathOf(databaseFile), std::filesystem::perms::owner_read);
    EXPECT_EQ(edit("Problem", "P01"), "");
    EXPECT_EQ(edit("Problem", "P99"), "Problem is unknown");
}

TEST_F(MasterDataCheck, ApostropheMakesTheQuestionInvalidUnlessItIsDoubled) {
    makeFullDatabase();
    EXPECT_EQ(edit("Problem", "x' OR 'a'='a"), "");
    EXPECT_THAT(log(), HasSubstr("For User Action: Update XML  ----------\r\nError =   "));
    EXPECT_EQ(edit("Problem", "it''s"), "");
    EXPECT_EQ(edit("Problem", "no''ne"), "Problem is unknown");
}

TEST_F(MasterDataCheck, FaultsOfQuestionsComeBeforeTheFailureInTheLog) {
    makeDatabase({"CREATE TABLE SERVICEITEMS (COMP TEXT, ITEM TEXT)"});
    EXPECT_EQ(client.updatexml(
                  "<harbrook><ccsocservcordr><record ServiceOrder='A1'><ServiceItem>I9"
                  "</ServiceItem><Problem>P99</Problem></record></ccsocservcordr></harbrook>"),
              "ServiceItem is unknown");
    const std::string text = log();
    EXPECT_LT(text.find("PROBLEMS"), text.find("Error =   ServiceItem is unknown\r\n"));
}

TEST_F(MasterDataCheck, DownloadedRecordIsTakenAndTheFailureLogged) {
    makeFullDatabase();
    const std::string downloaded =
        "<harbrook><ccsocservcordr><record ServiceOrder='A2' State='O'>"
        "<OrderStatus>15</OrderStatus><Problem>P99</Problem></record></ccsocservcordr></harbrook>";
    EXPECT_EQ(client.DownloadXml(downloaded), "New Data has been downloaded.");
    EXPECT_EQ(client.Get_Error(), "");
    EXPECT_THAT(log(), HasSubstr("For User Action: Download XML  ----------\r\n"
                                 "Error =   Problem is unknown\r\niXml =   " +
                                 downloaded));
    EXPECT_THAT(home.read("Vorn Tandril/Harbrook.xml"), HasSubstr("P99"));
}

TEST_F(MasterDataCheck, NewOrderIsRefused) {
    makeFullDatabase();
    EXPECT_EQ(client.AddXml("<harbrook><ccsocservcordr><record ServiceOrder='_1'>"
                            "<OrderStatus>15</OrderStatus><Problem>P99</Problem></record>"
                            "</ccsocservcordr></harbrook>"),
              "Problem is unknown");
    EXPECT_THAT(home.read("Vorn Tandril/Harbrook.xml"), Not(HasSubstr("_1")));
}

}  // namespace
}  // namespace tandril::test
