// tandril masterdata: databases come into being in a home, and one of them is the current one.
#include <gmock/gmock.h>

#include <filesystem>

#include "platform/database_file.h"
#include "support/process.h"
#include "support/query_result.h"
#include "support/read_file.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* sample = TANDRIL_SAMPLES "/masterdata/tandril.mdb";

class MasterdataCommandTest : public testing::Test {
  protected:
    ProcessResult run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"masterdata", "--home", home_.path()});
        return runProcess(TANDRIL_PROGRAM, arguments);
    }
    std::string output(std::vector<std::string> arguments) {
        const ProcessResult result = run(std::move(arguments));
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.end.status, 0);
        return result.output;
    }
    // The message of a command that is to fail; nothing is to be left of it.
    std::string failure(std::vector<std::string> arguments) {
        const auto before = databases();
        const ProcessResult result = run(std::move(arguments));
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.end.status, 1);
        EXPECT_EQ(databases(), before);
        return result.errors;
    }
    std::vector<std::string> databases() const {
        return home_.exists("Vorn Tandril/MasterData") ? home_.names("Vorn Tandril/MasterData")
                                                       : std::vector<std::string>();
    }
    std::unique_ptr<platform::Connection> open(const std::string& name) const {
        const std::string path = home_.pathOf("Vorn Tandril/MasterData/" + name + ".mdb");
        return platform::openDatabaseFile(path, path);
    }
    std::string call(std::vector<std::string> words) {
        words.insert(words.begin(), {"call", "--home", home_.path()});
        return runProcess(TANDRIL_PROGRAM, words).output;
    }

    TemporaryHome home_;
};

TEST_F(MasterdataCommandTest, CreateMakesEmptyTables) {
    EXPECT_EQ(output({"create", "Parts 1"}), "Parts 1: 20 tables\n");
    EXPECT_THAT(databases(), ElementsAre("Parts 1.mdb"));
    const auto database = open("Parts 1");
    EXPECT_THAT(resultOf(*database, "SELECT * FROM OBJECTS").columns,
                ElementsAre("COMP", "CCFG", "CROB", "OSEQ", "DSCA"));
    EXPECT_THAT(resultOf(*database, "SELECT * FROM PROBLEMS").columns,
                ElementsAre("COMP", "CPRL", "DSCA"));
    EXPECT_THAT(resultOf(*database, "SELECT * FROM PROBLEMS").records, IsEmpty());
    EXPECT_THAT(resultOf(*database, "SELECT count(*) FROM sqlite_master").records,
                ElementsAre(ElementsAre("20")));
}

TEST_F(MasterdataCommandTest, CreateKeepsADatabaseOfThatName) {
    output({"create", "Parts"});
    open("Parts")->execute("INSERT INTO UNITS VALUES ('1', 'h', 'Hours')");
    EXPECT_EQ(failure({"create", "Parts.mdb"}),
              "there is a database \"Parts\" already; --replace replaces it\n");
    EXPECT_THAT(resultOf(*open("Parts"), "SELECT CUNI FROM UNITS").records,
                ElementsAre(ElementsAre("h")));
    EXPECT_EQ(output({"create", "--replace", "Parts"}), "Parts: 20 tables\n");
    EXPECT_THAT(resultOf(*open("Parts"), "SELECT CUNI FROM UNITS").records, IsEmpty());
}

TEST_F(MasterdataCommandTest, RefusesNamesThatAreNoFileNames) {
    output({"create", "Parts"});
    for (const std::string name : {"a/b", "..", "", " x", "x ", "a\\b"}) {
        EXPECT_THAT(failure({"create", name}), HasSubstr("cannot be the name of a database"))
            << name;
        EXPECT_NE(failure({"use", name}), "") << name;
    }
}

TEST_F(MasterdataCommandTest, ImportCopiesAnAccessFile) {
    EXPECT_EQ(output({"import", sample, "Parts"}), "Parts: 20 tables, 109 rows\n");
    EXPECT_THAT(databases(), ElementsAre("Parts.mdb"));
    const auto source = platform::openDatabaseFile(sample, sample);
    const auto target = open("Parts");
    for (const std::string table : {"HOURLYLABORTYPE", "ADDRESSES", "UNITS", "OBJECTS"}) {
        const QueryResult expected = resultOf(*source, "SELECT * FROM " + table);
        const QueryResult copied = resultOf(*target, "SELECT * FROM " + table);
        EXPECT_EQ(copied.columns, expected.columns) << table;
        EXPECT_EQ(copied.records, expected.records) << table;
    }
}

TEST_F(MasterdataCommandTest, ImportNamesTheDatabaseAfterTheFile) {
    EXPECT_EQ(output({"import", sample}), "tandril: 20 tables, 109 rows\n");
    EXPECT_THAT(databases(), ElementsAre("tandril.mdb"));
}

TEST_F(MasterdataCommandTest, ImportReplacesAnAccessFileInItsPlace) {
    home_.write("Vorn Tandril/MasterData/Parts.mdb", readFile(sample));
    const std::string path = home_.pathOf("Vorn Tandril/MasterData/Parts.mdb");
    EXPECT_EQ(platform::databaseKind(path), platform::DatabaseKind::Access);
    EXPECT_NE(failure({"import", path}), "");
    EXPECT_EQ(platform::databaseKind(path), platform::DatabaseKind::Access);
    EXPECT_EQ(output({"import", path, "--replace"}), "Parts: 20 tables, 109 rows\n");
    EXPECT_EQ(platform::databaseKind(path), platform::DatabaseKind::Sqlite);
}

TEST_F(MasterdataCommandTest, ImportKeepsQuotesAndTellsWhatIsMissing) {
    output({"create", "Source"});
    for (const char* sql : {"DROP TABLE UNITS", "DROP TABLE TASKS",
                            "CREATE TABLE UNITS (COMP TEXT, \"a \"\"b\"\" 'c'; d\" TEXT)",
                            "INSERT INTO UNITS VALUES (NULL, 'it''s; \"ü\"')"}) {
        open("Source")->execute(sql);
    }
    const ProcessResult result =
        run({"import", home_.pathOf("Vorn Tandril/MasterData/Source.mdb"), "Target"});
    EXPECT_EQ(result.output, "Target: 20 tables, 1 rows\n");
    EXPECT_THAT(result.errors, testing::AllOf(testing::StartsWith("TASKS is missing in "),
                                              testing::EndsWith("; it has no rows\n")));
    EXPECT_EQ(result.end.status, 0);
    const QueryResult units = resultOf(*open("Target"), "SELECT * FROM UNITS");
    EXPECT_THAT(units.columns, ElementsAre("COMP", "a \"b\" 'c'; d"));
    EXPECT_THAT(units.records, ElementsAre(ElementsAre("", "it's; \"ü\"")));
    EXPECT_THAT(resultOf(*open("Target"), "SELECT * FROM TASKS").columns,
                ElementsAre("COMP", "CTSK", "DSCA"));
}

TEST_F(MasterdataCommandTest, ImportRefusesWhatHoldsNoMasterData) {
    EXPECT_THAT(failure({"import", home_.pathOf("none.mdb")}), HasSubstr("there is no such file"));
    home_.write("text.mdb", "a text, and not a short one");
    EXPECT_THAT(failure({"import", home_.pathOf("text.mdb")}),
                HasSubstr("neither a SQLite nor a Microsoft Access file"));
    home_.write("empty.mdb", "");
    EXPECT_THAT(failure({"import", home_.pathOf("empty.mdb")}),
                HasSubstr("holds none of the master-data tables"));
    home_.write("damaged.mdb", readFile(sample).substr(0, 100000));
    EXPECT_THAT(failure({"import", home_.pathOf("damaged.mdb")}),
                HasSubstr("holds none of the master-data tables"));
}

TEST_F(MasterdataCommandTest, ImportDrawsNoBarIntoAFile) {
    EXPECT_EQ(run({"import", sample}).errors, "");
}

TEST_F(MasterdataCommandTest, ListMarksTheCurrentDatabase) {
    EXPECT_EQ(output({"list"}), "");
    output({"create", "Parts"});
    home_.write("Vorn Tandril/MasterData/Access.mdb", readFile(sample));
    home_.write("Vorn Tandril/MasterData/Other.mdb", "something else, and quite long");
    home_.write("Vorn Tandril/MasterData/Master.exe", "");
    EXPECT_EQ(output({"list"}),
              "  Access (Access, can only be read)\n  Other (no database)\n  Parts (SQLite)\n");
    output({"use", "Parts"});
    EXPECT_EQ(output({"list"}),
              "  Access (Access, can only be read)\n  Other (no database)\n* Parts (SQLite)\n");
}

TEST_F(MasterdataCommandTest, UseSetsTheCurrentDatabaseAndTheDataSource) {
    output({"import", sample, "Parts"});
    EXPECT_EQ(output({"use", "Parts.mdb"}), "Parts is the current database\n");
    EXPECT_EQ(call({"GetVariable", "Currentmdb"}), "Parts\n");
    EXPECT_THAT(home_.read("registry.reg"),
                HasSubstr("\"DBQ\"=\"C:\\\\Vorn Tandril\\\\MasterData\\\\Parts.mdb\""));
    const ProcessResult result = runProcess(TANDRIL_PROGRAM, {"batch", "--home", home_.path()},
                                            "{\"method\":\"OpenDataBase\",\"args\":[]}\n{"
                                            "\"method\":\"MasterData\",\"args\":[\"PROB\"]}");
    EXPECT_THAT(result.output, HasSubstr("<td nowrap>&nbsp;P03</td><td nowrap>&nbsp;Leakage</td>"));
}

TEST_F(MasterdataCommandTest, UseNeedsTheDatabase) {
    EXPECT_EQ(failure({"use", "Parts"}), "there is no database \"Parts\"\n");
}

TEST_F(MasterdataCommandTest, NeedsAHome) {
    const std::string nowhere = home_.pathOf("nowhere");
    const ProcessResult result =
        runProcess(TANDRIL_PROGRAM, {"masterdata", "create", "Parts", "--home", nowhere});
    EXPECT_EQ(result.errors, "there is no home \"" + nowhere + "\"\n");
    EXPECT_EQ(result.end.status, 1);
    EXPECT_FALSE(home_.exists("nowhere"));
}

}  // namespace
}  // namespace tandril::test
