// The connection on real SQLite files through the ODBC driver.
#include "platform/odbc/connection.h"

#include <gmock/gmock.h>

#include "platform/fault.h"
#include "real_ports.h"
#include "support/query_result.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

using platform::Connection;
using platform::odbc::OdbcConnection;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    for (std::size_t count = 0; count < times; ++count) result += text;
    return result;
}

class OdbcConnectionTest : public ::testing::Test {
  protected:
    std::string connectionString() const { return sqliteConnection(home_.pathOf("test.db")); }
    // The message of the Fault that the statement ends with; "" when it ends well.
    std::string faultOf(const std::string& sql) {
        try {
            connection_.execute(sql);
        } catch (const Fault& fault) {
            return fault.what();
        }
        return "";
    }

    TemporaryHome home_;
    OdbcConnection connection_{connectionString()};
};

TEST_F(OdbcConnectionTest, GivesColumnNamesAsTheDatabaseDoes) {
    connection_.execute("CREATE TABLE T (COMP TEXT, dsca VARCHAR(10), [Größe in mm] REAL)");
    EXPECT_THAT(resultOf(connection_, "SELECT * FROM T").columns,
                ElementsAre("COMP", "dsca", "Größe in mm"));
}

TEST_F(OdbcConnectionTest, GivesEveryTypeAsTheDatabaseWritesIt) {
    connection_.execute("CREATE TABLE T (A TEXT, B VARCHAR(3), C INTEGER, D REAL, E DATE, F BLOB)");
    connection_.execute(
        "INSERT INTO T VALUES ('007', 'longer than three', 7, 1.50, 'no date', 'b')");
    connection_.execute("INSERT INTO T VALUES (NULL, NULL, NULL, NULL, NULL, NULL)");
    EXPECT_THAT(resultOf(connection_, "SELECT * FROM T").records,
                ElementsAre(ElementsAre("007", "longer than three", "7", "1.5", "no date", "b"),
                            ElementsAre("", "", "", "", "", "")));
}

TEST_F(OdbcConnectionTest, KeepsUnicodeInStatementsAndValues) {
    connection_.execute("CREATE TABLE T (A TEXT)");
    connection_.execute("INSERT INTO T VALUES ('Höhenweg ポンプ 😀𐍈')");
    EXPECT_THAT(resultOf(connection_, "SELECT A FROM T WHERE A = 'Höhenweg ポンプ 😀𐍈'").records,
                ElementsAre(ElementsAre("Höhenweg ポンプ 😀𐍈")));
}

class ValueLength : public OdbcConnectionTest, public ::testing::WithParamInterface<std::size_t> {};

// Around the sizes of the pieces in which values are read.
INSTANTIATE_TEST_SUITE_P(AroundPieces, ValueLength,
                         ::testing::Values(0, 1, 1022, 1023, 1024, 1025, 3069, 3070, 3071, 3072,
                                           65535, 65536, 1000000, 5000000));

TEST_P(ValueLength, IsKept) {
    const std::string ascii = repeated("x", GetParam());
    const std::string umlauts = repeated("ü", GetParam() / 2) + "x";
    connection_.execute("CREATE TABLE T (A TEXT, B VARCHAR(5))");
    connection_.execute("INSERT INTO T VALUES ('" + ascii + "', '" + umlauts + "')");
    const QueryResult result = resultOf(connection_, "SELECT * FROM T");
    ASSERT_EQ(result.records.size(), 1U);
    EXPECT_TRUE(result.records[0][0] == ascii) << result.records[0][0].size();
    EXPECT_TRUE(result.records[0][1] == umlauts) << result.records[0][1].size();
}

TEST_F(OdbcConnectionTest, StopsEarlyAndServesAgain) {
    connection_.execute("CREATE TABLE T (A TEXT)");
    connection_.execute("INSERT INTO T VALUES ('1'), ('2'), ('3')");
    std::vector<std::string> seen;
    connection_.query(
        "SELECT * FROM T", [](const auto&) {},
        [&](const std::vector<std::string>& record) {
            seen.push_back(record[0]);
            return seen.size() < 2;
        });
    EXPECT_THAT(seen, ElementsAre("1", "2"));
    // No lock is left behind: another connection can write.
    OdbcConnection(connectionString()).execute("DROP TABLE T");
    EXPECT_THAT(resultOf(connection_, "SELECT name FROM sqlite_master").records, IsEmpty());
}

TEST_F(OdbcConnectionTest, NamesCauseAndStatementInFaults) {
    EXPECT_EQ(faultOf("SELECT * FROM NOPE"),
              "cannot run SELECT * FROM NOPE: [HY000] [SQLite]no such table: NOPE (1) (1)");
}

TEST_F(OdbcConnectionTest, CutsLongStatementsInFaults) {
    const std::string message = faultOf("SELECT '" + repeated("ü", 1000) + "' FROM NOPE");
    EXPECT_THAT(message, HasSubstr("[HY000]"));
    EXPECT_LT(message.size(), 400U);
    EXPECT_THAT(message, HasSubstr("ü: "));
}

TEST_F(OdbcConnectionTest, ServesAfterAFault) {
    EXPECT_NE(faultOf("SELECT * FROM NOPE"), "");
    connection_.execute("CREATE TABLE T (A TEXT)");
    EXPECT_THAT(resultOf(connection_, "SELECT * FROM T").columns, ElementsAre("A"));
}

TEST_F(OdbcConnectionTest, TakesAChangeOfNothingForSuccess) {
    connection_.execute("CREATE TABLE T (A TEXT)");
    EXPECT_EQ(faultOf("DELETE FROM T WHERE A = 'x'"), "");
    EXPECT_EQ(faultOf("UPDATE T SET A = 'y' WHERE A = 'x'"), "");
}

TEST_F(OdbcConnectionTest, RunsOnlySingleStatements) {
    connection_.execute("CREATE TABLE T (A TEXT)");
    EXPECT_EQ(faultOf("INSERT INTO T VALUES ('1'); DROP TABLE T"),
              "invalid statement, more than one: INSERT INTO T VALUES ('1'); DROP TABLE T");
    EXPECT_EQ(faultOf("INSERT INTO T VALUES ('1"),
              "invalid statement, unclosed literal: INSERT INTO T VALUES ('1");
    EXPECT_THAT(faultOf(std::string("INSERT INTO T VALUES ('1\0') --", 30)),
                HasSubstr("invalid statement, zero character"));
    EXPECT_EQ(faultOf("INSERT INTO T VALUES ('a;b''c;\"') ; "), "");
    EXPECT_THAT(resultOf(connection_, "SELECT * FROM T").records,
                ElementsAre(ElementsAre("a;b'c;\"")));
}

// Literals hold what ODBC drivers might take for their own: escapes and parameter marks.
TEST_F(OdbcConnectionTest, LeavesLiteralsAlone) {
    EXPECT_THAT(resultOf(connection_, "SELECT '{d ''2020-01-01''} ? {fn x} -- \\ %' A").records,
                ElementsAre(ElementsAre("{d '2020-01-01'} ? {fn x} -- \\ %")));
}

TEST_F(OdbcConnectionTest, CommitsWhatStandsBeforeAFailure) {
    connection_.execute("CREATE TABLE T (A TEXT PRIMARY KEY)");
    connection_.begin();
    connection_.execute("INSERT INTO T VALUES ('1')");
    EXPECT_THAT(faultOf("INSERT INTO T VALUES ('1')"), HasSubstr("UNIQUE"));
    connection_.commit();
    OdbcConnection other(connectionString());
    EXPECT_THAT(resultOf(other, "SELECT * FROM T").records, ElementsAre(ElementsAre("1")));
}

TEST_F(OdbcConnectionTest, ForgetsWhatIsRolledBack) {
    connection_.execute("CREATE TABLE T (A TEXT)");
    connection_.begin();
    connection_.execute("INSERT INTO T VALUES ('1')");
    connection_.rollback();
    EXPECT_THAT(resultOf(connection_, "SELECT * FROM T").records, IsEmpty());
    connection_.execute("INSERT INTO T VALUES ('2')");
    OdbcConnection other(connectionString());
    EXPECT_THAT(resultOf(other, "SELECT * FROM T").records, ElementsAre(ElementsAre("2")));
}

TEST_F(OdbcConnectionTest, ForgetsWhatWasNotCommittedWhenItCloses) {
    connection_.execute("CREATE TABLE T (A TEXT)");
    {
        OdbcConnection other(connectionString());
        other.begin();
        other.execute("INSERT INTO T VALUES ('1')");
    }
    EXPECT_THAT(resultOf(connection_, "SELECT * FROM T").records, IsEmpty());
}

TEST(OdbcConnectionOpening, NamesTheCause) {
    try {
        OdbcConnection connection("Driver=no-such-driver.so");
        FAIL() << "there is such a driver";
    } catch (const Fault& fault) {
        EXPECT_THAT(fault.what(), HasSubstr("cannot connect: [01000]"));
        EXPECT_THAT(fault.what(), HasSubstr("no-such-driver.so"));
    }
}

}  // namespace
}  // namespace tandril::test
