// Data sources of a home: which file they name and what opens it.
#include "platform/home/home_database.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/fault.h"
#include "platform/linux/home_files.h"
#include "platform/odbc/connection.h"
#include "support/memory_registry.h"
#include "support/query_result.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

using platform::Connection;
using platform::RegistryRoot;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* dsn = "Tandril Master Data";
constexpr const char* keyPath = "SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data";
constexpr const char* filePath = "Vorn Tandril/MasterData/Parts.mdb";
constexpr const char* systemFile = "C:\\Vorn Tandril\\MasterData\\Parts.mdb";

class HomeDatabaseTest : public ::testing::Test {
  protected:
    HomeDatabaseTest() { setValue("DBQ", systemFile); }

    void setValue(const char* name, const std::string& value) {
        registry_.createKey(RegistryRoot::LocalMachine, keyPath);
        registry_.setText(RegistryRoot::LocalMachine, keyPath, name, value);
    }
    void copySample(const char* to = filePath) {
        home_.write(to, "");
        std::filesystem::copy_file(TANDRIL_SAMPLES "/masterdata/tandril.mdb", home_.pathOf(to),
                                   std::filesystem::copy_options::overwrite_existing);
    }
    std::unique_ptr<Connection> open() { return database_.open(dsn); }
    std::string openFault() {
        try {
            open();
        } catch (const Fault& fault) {
            return fault.what();
        }
        return "";
    }
    static std::string faultOf(Connection& connection, const std::string& sql) {
        try {
            resultOf(connection, sql);
        } catch (const Fault& fault) {
            return fault.what();
        }
        return "";
    }

    TemporaryHome home_;
    platform::HomeFiles files_{home_.path()};
    MemoryRegistry registry_;
    platform::HomeDatabase database_{
        [this](std::string_view path) { return files_.realPath(path); }, registry_};
};

TEST_F(HomeDatabaseTest, OpensAnEmptyFileAsSqlite) {
    home_.write(filePath, "");
    open()->execute("CREATE TABLE T (A TEXT)");
    open()->execute("INSERT INTO T VALUES ('1')");
    EXPECT_THAT(resultOf(*open(), "SELECT * FROM T").records, ElementsAre(ElementsAre("1")));
    EXPECT_THAT(home_.read(filePath), HasSubstr("SQLite format 3"));
}

TEST_F(HomeDatabaseTest, FindsTheFileInBlanksAndUmlauts) {
    setValue("DBQ", "C:\\Vorn Tandril\\MasterData\\Stämme 1.mdb");
    home_.write("Vorn Tandril/MasterData/Stämme 1.mdb", "");
    open()->execute("CREATE TABLE T (A TEXT)");
    EXPECT_THAT(home_.read("Vorn Tandril/MasterData/Stämme 1.mdb"), HasSubstr("SQLite format 3"));
}

TEST_F(HomeDatabaseTest, RefusesAMissingFile) {
    EXPECT_EQ(openFault(), "cannot open the database \"" + std::string(systemFile) +
                               "\": there is no such file");
    EXPECT_FALSE(home_.exists(filePath));
}

TEST_F(HomeDatabaseTest, RefusesAFolder) {
    setValue("DBQ", "C:\\Vorn Tandril\\MasterData\\");
    home_.makeFolder("Vorn Tandril/MasterData");
    EXPECT_THAT(openFault(), HasSubstr("there is no such file"));
}

TEST_F(HomeDatabaseTest, RefusesAPathOutOfTheHome) {
    setValue("DBQ", "C:\\..\\Parts.mdb");
    EXPECT_THAT(openFault(), HasSubstr("there is no such file"));
}

TEST_F(HomeDatabaseTest, RefusesOtherContent) {
    for (const std::string content :
         {"x", "SQLite format 2", "a longer text that is no database"}) {
        home_.write(filePath, content);
        EXPECT_THAT(openFault(), HasSubstr("neither a SQLite nor a Microsoft Access file"))
            << content;
    }
}

// What follows the sign would be taken for another setting of the driver.
TEST_F(HomeDatabaseTest, RefusesSignsThatSplitConnectionStrings) {
    setValue("DBQ", "C:\\a;NoCreat=0;Database=b.mdb");
    home_.write("a;NoCreat=0;Database=b.mdb", "");
    EXPECT_THAT(openFault(), HasSubstr("one of the characters ; { }"));
    EXPECT_THAT(home_.names(), ElementsAre("a;NoCreat=0;Database=b.mdb"));
}

TEST_F(HomeDatabaseTest, RefusesAnUnknownDataSource) {
    EXPECT_THROW(database_.open("Another"), Fault);
}

TEST_F(HomeDatabaseTest, TakesAnyConnectionString) {
    setValue("ConnectionString", "Driver=libsqlite3odbc.so;Database=" + home_.pathOf("other.db"));
    open()->execute("CREATE TABLE T (A TEXT)");
    EXPECT_TRUE(home_.exists("other.db"));
}

TEST_F(HomeDatabaseTest, IgnoresAnEmptyConnectionString) {
    setValue("ConnectionString", "");
    home_.write(filePath, "");
    EXPECT_EQ(openFault(), "");
}

TEST_F(HomeDatabaseTest, RefusesToWriteAWriteProtectedFile) {
    home_.write(filePath, "");
    open()->execute("CREATE TABLE T (A TEXT)");
    std::filesystem::permissions(home_.pathOf(filePath), std::filesystem::perms::owner_read);
    if (::access(home_.pathOf(filePath).c_str(), W_OK) == 0) {
        GTEST_SKIP() << "the superuser may write everything";
    }
    EXPECT_THROW(open()->execute("INSERT INTO T VALUES ('1')"), Fault);
    EXPECT_THAT(resultOf(*open(), "SELECT * FROM T").records, IsEmpty());
}

TEST_F(HomeDatabaseTest, ReadsAnAccessFile) {
    copySample();
    const QueryResult objects = resultOf(*open(), "SELECT * FROM OBJECTS");
    EXPECT_THAT(objects.columns, ElementsAre("COMP", "CCFG", "CROB", "OSEQ", "DSCA"));
    EXPECT_THAT(objects.records, SizeIs(12));
    EXPECT_THAT(objects.records,
                Contains(ElementsAre("100", "C-110", "OB-112", "2", "Heat wheel")));
    EXPECT_THAT(resultOf(*open(), "SELECT * FROM ADDRESSES").records,
                Contains(ElementsAre("100", "AD005", "Höhenweg 3, Ostwick")));
}

TEST_F(HomeDatabaseTest, AppliesConditionsToAnAccessFile) {
    copySample();
    const auto connection = open();
    EXPECT_THAT(resultOf(*connection, "SELECT * FROM UNITS WHERE CUNI = 'm²'").records,
                ElementsAre(ElementsAre("100", "m²", "Square metres")));
    EXPECT_THAT(
        resultOf(*connection, "Select * from OBJECTS where CCFG ='C-100' and oseq = '2'").records,
        ElementsAre(ElementsAre("100", "C-100", "OB-102", "2", "Return fan")));
    EXPECT_THAT(resultOf(*connection, "SELECT * FROM PROBLEMS WHERE CPRL = 'p01'").records,
                IsEmpty());
}

TEST_F(HomeDatabaseTest, TakesAnyValueInAConditionOnAnAccessFile) {
    copySample();
    const auto connection = open();
    for (const std::string& value :
         {std::string(), std::string("it''s"), std::string("'' or ''1''=''1"), std::string("%"),
          std::string("\"; DROP TABLE UNITS; --"), std::string("a\nb\\"), std::string(300, 'x'),
          std::string(100000, 'x')}) {
        const QueryResult result =
            resultOf(*connection, "SELECT * FROM PROBLEMS WHERE CPRL = '" + value + "'");
        EXPECT_THAT(result.records, IsEmpty()) << value.substr(0, 100);
        EXPECT_THAT(result.columns, ElementsAre("COMP", "CPRL", "DSCA"));
    }
}

TEST_F(HomeDatabaseTest, RefusesToWriteAnAccessFile) {
    copySample();
    const std::string before = home_.read(filePath);
    const auto connection = open();
    EXPECT_THROW(connection->execute("DELETE FROM UNITS WHERE CUNI = 'm'"), Fault);
    EXPECT_THAT(faultOf(*connection, "INSERT INTO UNITS (COMP) VALUES ('1')"),
                HasSubstr("cannot be asked: INSERT"));
    connection->begin();
    EXPECT_THROW(connection->execute("UPDATE UNITS SET DSCA = ''"), Fault);
    connection->commit();
    EXPECT_EQ(home_.read(filePath), before);
}

TEST_F(HomeDatabaseTest, RefusesUnknownNamesInAnAccessFile) {
    copySample();
    const auto connection = open();
    EXPECT_NE(faultOf(*connection, "SELECT * FROM NOPE"), "");
    EXPECT_EQ(faultOf(*connection, "SELECT * FROM UNITS WHERE NOPE = 'x'"),
              "the table UNITS has no column NOPE");
    // The connection serves on.
    EXPECT_THAT(resultOf(*connection, "SELECT * FROM UNITS").records, SizeIs(6));
}

TEST_F(HomeDatabaseTest, RefusesADamagedAccessFile) {
    copySample();
    std::filesystem::resize_file(home_.pathOf(filePath), 300000);
    const auto connection = open();
    EXPECT_NE(faultOf(*connection, "SELECT * FROM UNITS"), "");
}

}  // namespace
}  // namespace tandril::test
