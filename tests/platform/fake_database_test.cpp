#include "support/fake_database.h"

#include <gmock/gmock.h>

#include "platform/fault.h"

namespace tandril::test {
namespace {

using ::testing::ElementsAre;

using Texts = std::vector<std::string>;

TEST(FakeDatabaseTest, AnswersAndRecords) {
    FakeDatabase database;
    database.answer("select A from T", {{"A"}, {{"1"}, {"2"}, {"3"}}});
    const auto connection = database.open("Tandril Master Data");
    Texts columns;
    Texts seen;
    connection->begin();
    connection->query(
        "select A from T", [&](const Texts& names) { columns = names; },
        [&](const Texts& row) {
            seen.push_back(row.at(0));
            return seen.size() < 2;
        });
    connection->execute("delete from T");
    connection->commit();
    EXPECT_THAT(columns, ElementsAre("A"));
    EXPECT_THAT(seen, ElementsAre("1", "2"));
    EXPECT_THAT(database.opened, ElementsAre("Tandril Master Data"));
    EXPECT_THAT(database.statements,
                ElementsAre("BEGIN", "select A from T", "delete from T", "COMMIT"));
}

TEST(FakeDatabaseTest, FailsWhatItIsToldTo) {
    FakeDatabase database;
    database.fail("insert into T", "no room");
    database.failOpen("no such source");
    EXPECT_THROW(database.open("x"), Fault);
    database.failOpen("");
    const auto connection = database.open("x");
    EXPECT_EQ(database.openConnections, 1);
    EXPECT_THROW(connection->execute("insert into T values (1)"), Fault);
    EXPECT_THROW(connection->query(
                     "select 1", [](const Texts&) {}, [](const Texts&) { return true; }),
                 Fault);
    connection->rollback();
    EXPECT_THAT(database.statements,
                ElementsAre("insert into T values (1)", "select 1", "ROLLBACK"));
}

}  // namespace
}  // namespace tandril::test
