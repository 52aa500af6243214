#include "masterdata/synchronisation.h"

#include <gmock/gmock.h>

#include "platform/fault.h"
#include "platform/home/file_drivers.h"
#include "support/fake_database.h"
#include "support/query_result.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

using masterdata::synchronise;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class SynchroniseTest : public ::testing::Test {
  protected:
    std::string apply(std::string_view extract) {
        return synchronise(extract, [this] { return database_.open("Tandril Master Data"); });
    }
    // The statements for rows of the units table in company 100.
    std::vector<std::string> unitStatements(const std::string& rows) {
        EXPECT_EQ(apply("<HBMasterData COMP=\"100\"><UNITS SERVICECENTER=\"\">" + rows +
                        "</UNITS></HBMasterData>"),
                  "SUCCESSFUL");
        return database_.statements;
    }
    std::vector<std::string> objectStatements(const std::string& rows) {
        EXPECT_EQ(
            apply("<HBMasterData COMP=\"100\"><OBJECTS>" + rows + "</OBJECTS></HBMasterData>"),
            "SUCCESSFUL");
        return database_.statements;
    }

    FakeDatabase database_;
};

TEST_F(SynchroniseTest, InsertsARow) {
    EXPECT_THAT(
        unitStatements("<r STATUS='I' ID='h'><CUNI>h</CUNI><DSCA>Hours &amp; more</DSCA></r>"),
        ElementsAre("BEGIN", "INSERT INTO UNITS (COMP,CUNI,DSCA) VALUES ('100','h','Hours & more')",
                    "COMMIT"));
}

TEST_F(SynchroniseTest, InsertsAnObject) {
    EXPECT_THAT(
        objectStatements("<r STATUS='I' CCFG='C' CROB='O' OSEQ='1'><DSCA>Fan</DSCA></r>"),
        ElementsAre(
            "BEGIN",
            "INSERT INTO OBJECTS (COMP, CCFG,CROB,OSEQ,DSCA) VALUES ('100','C','O','1','Fan')",
            "COMMIT"));
}

// The database refuses it.
TEST_F(SynchroniseTest, InsertsARowWithoutColumnsAsItStands) {
    EXPECT_THAT(unitStatements("<r STATUS='I' ID='h'/>"),
                ElementsAre("BEGIN", "INSERT INTO UNITS (COMP,) VALUES ('100')", "COMMIT"));
}

TEST_F(SynchroniseTest, ModifiesARow) {
    EXPECT_THAT(unitStatements("<r STATUS='M' ID='h'><CUNI>H</CUNI><DSCA>Hour<b>s</b></DSCA></r>"),
                ElementsAre("BEGIN",
                            "UPDATE UNITS SET CUNI = 'H',DSCA = 'Hours' WHERE  COMP = '100' and "
                            "CUNI = 'h'",
                            "COMMIT"));
}

TEST_F(SynchroniseTest, ModifiesAnObject) {
    EXPECT_THAT(objectStatements("<r STATUS='M' CCFG='C' CROB='O' OSEQ='1'><DSCA>F</DSCA></r>"),
                ElementsAre("BEGIN",
                            "UPDATE OBJECTS SET DSCA = 'F' WHERE  COMP = '100' and CCFG = 'C' and "
                            "CROB = 'O' and OSEQ = '1'",
                            "COMMIT"));
}

TEST_F(SynchroniseTest, DeletesARow) {
    EXPECT_THAT(
        unitStatements("<r STATUS='D' ID='h'><DSCA>x</DSCA></r>"),
        ElementsAre("BEGIN", "DELETE FROM UNITS WHERE  COMP = '100' and CUNI = 'h'", "COMMIT"));
}

TEST_F(SynchroniseTest, FailsTheObjectsAtADeletion) {
    EXPECT_THAT(objectStatements("<r STATUS='M' CCFG='C' CROB='O' OSEQ='1'><DSCA>F</DSCA></r>"
                                 "<r STATUS='D' CCFG='C' CROB='O' OSEQ='1'/>"
                                 "<r STATUS='M' CCFG='C' CROB='O' OSEQ='2'><DSCA>G</DSCA></r>"),
                ElementsAre("BEGIN",
                            "UPDATE OBJECTS SET DSCA = 'F' WHERE  COMP = '100' and CCFG = 'C' and "
                            "CROB = 'O' and OSEQ = '1'",
                            "COMMIT"));
}

TEST_F(SynchroniseTest, SkipsRowsWithAnotherStatus) {
    EXPECT_THAT(unitStatements("<r STATUS='i' ID='h'/><r STATUS='X'/><r STATUS=''/><r ID='h'/>"),
                ElementsAre("BEGIN", "COMMIT"));
}

TEST_F(SynchroniseTest, TakesMissingAttributesForEmptyOnes) {
    EXPECT_EQ(apply("<HBMasterData><UNITS><r STATUS='D'/></UNITS></HBMasterData>"), "SUCCESSFUL");
    EXPECT_THAT(database_.statements,
                ElementsAre("BEGIN", "DELETE FROM UNITS WHERE  COMP = '' and CUNI = ''", "COMMIT"));
}

TEST_F(SynchroniseTest, TakesTheFirstGroupOfNoServiceCentre) {
    EXPECT_EQ(apply("<a><HBMasterData COMP='1'>"
                    "<UNITS SERVICECENTER='S'><r STATUS='D' ID='1'/></UNITS>"
                    "<UNITS SERVICECENTER=' '><r STATUS='D' ID='2'/></UNITS>"
                    "<more><UNITS><r STATUS='D' ID='3'/></UNITS></more>"
                    "<UNITS SERVICECENTER=''><r STATUS='D' ID='4'/></UNITS>"
                    "<units><r STATUS='D' ID='5'/></units>"
                    "</HBMasterData></a>"),
              "SUCCESSFUL");
    EXPECT_THAT(
        database_.statements,
        ElementsAre("BEGIN", "DELETE FROM UNITS WHERE  COMP = '1' and CUNI = '3'", "COMMIT"));
}

TEST_F(SynchroniseTest, AppliesUnitsInDocumentOrderAndTablesInTheirs) {
    EXPECT_EQ(apply("<a><HBMasterData COMP='1'><SOLUTIONS><r STATUS='D' ID='1'/></SOLUTIONS>"
                    "<HBMasterData COMP='2'><UNITS><r STATUS='D' ID='2'/></UNITS></HBMasterData>"
                    "</HBMasterData><b><HBMasterData COMP='3'><TASKS><r STATUS='D' ID='3'/></TASKS>"
                    "</HBMasterData></b></a>"),
              "SUCCESSFUL");
    EXPECT_THAT(
        database_.statements,
        ElementsAre("BEGIN", "DELETE FROM UNITS WHERE  COMP = '1' and CUNI = '2'", "COMMIT",
                    "BEGIN", "DELETE FROM SOLUTIONS WHERE  COMP = '1' and CSTN = '1'", "COMMIT",
                    "BEGIN", "DELETE FROM UNITS WHERE  COMP = '2' and CUNI = '2'", "COMMIT",
                    "BEGIN", "DELETE FROM TASKS WHERE  COMP = '3' and CTSK = '3'", "COMMIT"));
}

TEST_F(SynchroniseTest, KeepsWhatStandsBeforeAFailureAndGoesOnWithOtherTables) {
    database_.fail("DELETE FROM TASKS WHERE  COMP = '1' and CTSK = '2'", "refused");
    EXPECT_EQ(apply("<HBMasterData COMP='1'><TASKS><r STATUS='D' ID='1'/><r STATUS='D' ID='2'/>"
                    "<r STATUS='D' ID='3'/></TASKS><UNITS><r STATUS='D' ID='4'/></UNITS>"
                    "</HBMasterData>"),
              "SUCCESSFUL");
    EXPECT_THAT(database_.statements,
                ElementsAre("BEGIN", "DELETE FROM TASKS WHERE  COMP = '1' and CTSK = '1'",
                            "DELETE FROM TASKS WHERE  COMP = '1' and CTSK = '2'", "COMMIT", "BEGIN",
                            "DELETE FROM UNITS WHERE  COMP = '1' and CUNI = '4'", "COMMIT"));
    EXPECT_EQ(database_.openConnections, 0);
}

TEST_F(SynchroniseTest, OpensOneConnectionForAllTables) {
    EXPECT_EQ(apply("<HBMasterData COMP='1'><TASKS><r STATUS='D'/></TASKS>"
                    "<UNITS><r STATUS='D'/></UNITS></HBMasterData>"),
              "SUCCESSFUL");
    EXPECT_THAT(database_.opened, ElementsAre("Tandril Master Data"));
    EXPECT_EQ(database_.openConnections, 0);
}

TEST_F(SynchroniseTest, NeedsNoDatabaseForAnExtractWithoutRows) {
    for (const std::string_view extract :
         {"<a/>", "<HBMasterData/>", "<HBMasterData COMP='1'><UNITS/></HBMasterData>",
          "<hbmasterdata COMP='1'><UNITS><r STATUS='D'/></UNITS></hbmasterdata>"}) {
        EXPECT_EQ(apply(extract), "SUCCESSFUL") << extract;
    }
    EXPECT_THAT(database_.opened, IsEmpty());
}

TEST_F(SynchroniseTest, RefusesWhatIsNoXml) {
    for (const std::string_view extract :
         {"", "text", "<a>", "<a/><b/>", "<!DOCTYPE a><a/>", "<a>&nbsp;</a>", "<a b='1' b='2'/>"}) {
        EXPECT_EQ(apply(extract), "INVALID XML String!!") << extract;
    }
    EXPECT_THAT(database_.opened, IsEmpty());
}

TEST_F(SynchroniseTest, IsSuccessfulWhenTheDatabaseDoesNotOpen) {
    database_.failOpen("locked");
    EXPECT_THAT(unitStatements("<r STATUS='D'/>"), IsEmpty());
}

TEST_F(SynchroniseTest, IsSuccessfulWithoutADatabase) {
    EXPECT_EQ(synchronise("<HBMasterData><UNITS><r STATUS='D'/></UNITS></HBMasterData>",
                          [] { return nullptr; }),
              "SUCCESSFUL");
}

TEST_F(SynchroniseTest, FailsWhenSomethingElseGoesWrong) {
    EXPECT_EQ(
        synchronise("<HBMasterData><UNITS><r STATUS='D'/></UNITS></HBMasterData>",
                    []() -> std::unique_ptr<platform::Connection> { throw std::bad_alloc(); }),
        "FAILED");
}

TEST(SynchroniseSqlite, AppliesEveryRowUpToTheOneThatFails) {
    TemporaryHome home;
    home.write("m.db", "");
    const auto open = [&] { return platform::openSqliteFile(home.pathOf("m.db")); };
    const auto connection = open();
    platform::Connection& database = *connection;
    database.execute("CREATE TABLE UNITS (COMP TEXT, CUNI TEXT, DSCA TEXT, PRIMARY KEY (CUNI))");
    database.execute("CREATE TABLE SOLUTIONS (COMP TEXT, CSTN TEXT, DSCA TEXT)");
    database.execute("INSERT INTO UNITS VALUES ('100', 'h', 'Hours'), ('200', 'm', 'Metres')");
    const std::string extract =
        "<HBMasterData COMP='100'><UNITS>"
        "<r STATUS='I' ID='kg'><CUNI>kg</CUNI><DSCA>Größe &lt;5&gt; it''s</DSCA></r>"
        "<r STATUS='M' ID='h'><DSCA>Stunden</DSCA></r>"
        "<r STATUS='D' ID='m'/>"  // another company's
        "<r STATUS='I' ID='h'><CUNI>h</CUNI></r>"
        "<r STATUS='D' ID='kg'/></UNITS>"
        "<SOLUTIONS><r STATUS='I' ID='s'><CSTN>s</CSTN></r></SOLUTIONS></HBMasterData>";
    EXPECT_EQ(synchronise(extract, open), "SUCCESSFUL");
    EXPECT_THAT(
        resultOf(database, "SELECT * FROM UNITS").records,
        UnorderedElementsAre(ElementsAre("100", "h", "Stunden"), ElementsAre("200", "m", "Metres"),
                             ElementsAre("100", "kg", "Größe <5> it's")));
    EXPECT_THAT(resultOf(database, "SELECT CSTN FROM SOLUTIONS").records,
                ElementsAre(ElementsAre("s")));
}

}  // namespace
}  // namespace tandril::test
