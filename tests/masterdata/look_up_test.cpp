#include "masterdata/look_up.h"

#include <gmock/gmock.h>

#include "platform/fault.h"
#include "support/fake_database.h"

namespace tandril::test {
namespace {

class LookUpTest : public ::testing::Test {
  protected:
    FakeDatabase database_;
    std::unique_ptr<platform::Connection> connection_ = database_.open("");
};

TEST_F(LookUpTest, FindsTheKeyOfTheFieldsTable) {
    database_.answer("select * from PROBLEMS where CPRL = 'P1'", {{"CPRL"}, {{"P1"}}});
    database_.answer("select * from PROBLEMS where CPRL = 'P2'", {{"CPRL"}, {}});
    EXPECT_TRUE(masterdata::hasValue(*connection_, "Problem", "P1"));
    EXPECT_FALSE(masterdata::hasValue(*connection_, "Problem", "P2"));
}

TEST_F(LookUpTest, LooksForServiceItemsAmongTheItems) {
    database_.answer("select * from SERVICEITEMS where ITEM = 'I1'", {{"ITEM"}, {{"I1"}}});
    EXPECT_TRUE(masterdata::hasValue(*connection_, "ServiceItem", "I1"));
}

TEST_F(LookUpTest, FindsAnObjectOfItsConfigurationByItsExactName) {
    database_.answer("select * from OBJECTS where CCFG ='C' and CROB = 'ob1'",
                     {{"COMP", "CROB"}, {{"1", "OB1"}}});
    database_.answer("select * from OBJECTS where CCFG ='C' and CROB = 'OB1'",
                     {{"COMP", "CROB"}, {{"1", "ob1"}, {"2", "OB1"}}});
    EXPECT_FALSE(masterdata::hasObject(*connection_, "C", "ob1"));
    EXPECT_TRUE(masterdata::hasObject(*connection_, "C", "OB1"));
}

TEST_F(LookUpTest, FindsAnObjectByItsNumber) {
    database_.answer("Select * from OBJECTS where CCFG = 'C' and OSEQ = '1'", {{"OSEQ"}, {{"1"}}});
    database_.answer("Select * from OBJECTS where CCFG = 'C' and OSEQ = '2'", {{"OSEQ"}, {}});
    EXPECT_TRUE(masterdata::hasObjectNumber(*connection_, "C", "1"));
    EXPECT_FALSE(masterdata::hasObjectNumber(*connection_, "C", "2"));
}

TEST_F(LookUpTest, RefusesTextsThatAreNoLiterals) {
    EXPECT_THROW(masterdata::hasValue(*connection_, "Problem", "it's"), Fault);
    EXPECT_THROW(masterdata::hasObject(*connection_, "C'", "x"), Fault);
    EXPECT_THROW(masterdata::hasObject(*connection_, "C", "x'"), Fault);
    EXPECT_THROW(masterdata::hasObjectNumber(*connection_, "' or ''='", "1"), Fault);
    EXPECT_THAT(database_.statements, ::testing::IsEmpty());
}

}  // namespace
}  // namespace tandril::test
