#include "store/remove.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/records.h"

namespace tandril::test {
namespace {

using store::EmptyGroup;
using store::RecordKey;
using store::Section;
using testing::ElementsAre;

const std::string full =
    orders(order("A1", "O", "15") + order("A2", "O", "15")) +
    activities(group("A1", activity("10", "O", "15") + activity("20", "O", "15")) +
               group("A2", activity("10", "O", "15"))) +
    material(costGroup("A1", "10", line("1", "O", "m") + line("2", "O", "m"))) +
    labour(costGroup("A1", "20", line("1", "O", "l")) +
           costGroup("A2", "10", line("1", "O", "l"))) +
    other(costGroup("A1", "10", line("1", "O", "o"))) + registrations(line("1", "N", "h"));

std::string removed(const RecordKey& key) {
    store::OrderStore store = storeOf(full);
    store::remove(store, key);
    return sectionsOf(store);
}

TEST(Remove, AnOrderWithEverythingBelowIt) {
    EXPECT_EQ(removed({Section::Orders, "A1"}),
              orders(order("A2", "O", "15")) + activities(group("A2", activity("10", "O", "15"))) +
                  material("") + labour(costGroup("A2", "10", line("1", "O", "l"))) + other("") +
                  registrations(line("1", "N", "h")));
}

TEST(Remove, WhatIsBelowAnOrderThatIsNotThere) {
    store::OrderStore store =
        storeOf(activities(group("A1", activity("10", "O", "15"))) +
                other(costGroup("A1", "10", line("1", "O", "o")) + costGroup("A1", "20", "")));
    store::removeOrder(store, "A1");
    EXPECT_EQ(sectionsOf(store), activities("") + other(""));
}

TEST(Remove, AnActivityWithItsLines) {
    EXPECT_EQ(removed({Section::Activities, "A1", "10"}),
              orders(order("A1", "O", "15") + order("A2", "O", "15")) +
                  activities(group("A1", activity("20", "O", "15")) +
                             group("A2", activity("10", "O", "15"))) +
                  material("") +
                  labour(costGroup("A1", "20", line("1", "O", "l")) +
                         costGroup("A2", "10", line("1", "O", "l"))) +
                  other("") + registrations(line("1", "N", "h")));
}

TEST(Remove, TheLastActivityLeavesItsGroupOrTakesItAlong) {
    const std::string before = activities(group("A1", activity("10", "O", "15")));
    store::OrderStore store = storeOf(before);
    store::removeActivity(store, "A1", "10", EmptyGroup::Stays);
    EXPECT_EQ(sectionsOf(store), activities(group("A1", "")));
    store::OrderStore other = storeOf(before);
    store::removeActivity(other, "A1", "10", EmptyGroup::Goes);
    EXPECT_EQ(sectionsOf(other), activities(""));
}

TEST(Remove, ALineOnly) {
    EXPECT_EQ(removed({Section::Material, "A1", "10", "1"}).find(line("1", "O", "m")),
              std::string::npos);
    EXPECT_NE(removed({Section::Material, "A1", "10", "1"}).find(line("2", "O", "m")),
              std::string::npos);
}

TEST(Remove, WhatIsNotThereChangesNothing) {
    for (const RecordKey& key :
         {RecordKey{Section::Orders, "B1"}, RecordKey{Section::Activities, "A1", "90"},
          RecordKey{Section::Other, "A1", "10", "9"},
          RecordKey{Section::Labour, "A1", "10", "1"}}) {
        EXPECT_EQ(removed(key), full);
    }
}

TEST(Remove, TheKeysThatAreGivenSayWhatIsAddressed) {
    using store::addressed;
    EXPECT_EQ(addressed("A1", "", "", ""), (RecordKey{Section::Orders, "A1"}));
    EXPECT_EQ(addressed("A1", "10", "", "material"), (RecordKey{Section::Activities, "A1", "10"}));
    EXPECT_EQ(addressed("", "10", "", ""), (RecordKey{Section::Activities, "", "10"}));
    EXPECT_EQ(addressed("A1", "10", "1", "material"),
              (RecordKey{Section::Material, "A1", "10", "1"}));
    EXPECT_EQ(addressed("A1", "10", "1", "labor"), (RecordKey{Section::Labour, "A1", "10", "1"}));
    EXPECT_EQ(addressed("A1", "10", "1", "other"), (RecordKey{Section::Other, "A1", "10", "1"}));
    EXPECT_EQ(addressed("", "", "1", "other"), (RecordKey{Section::Other, "", "", "1"}));
    EXPECT_EQ(addressed("A1", "10", "1", "Material"), std::nullopt);
    EXPECT_EQ(addressed("A1", "10", "1", ""), std::nullopt);
    EXPECT_EQ(addressed("", "", "", "material"), std::nullopt);
}

TEST(Remove, AnHourRegistrationIsDeletedAmongTheLabourLines) {
    EXPECT_EQ(store::addressed("A1", "20", "1", "hra"),
              (RecordKey{Section::Labour, "A1", "20", "1"}));
}

TEST(Remove, TheWitnessSeesWhatIsBelow) {
    const store::OrderStore store = storeOf(full);
    std::vector<std::string> seen;
    const store::Witness witness = [&](const RecordKey& key, xml::Node record) {
        EXPECT_TRUE(store.record(key) == record);
        seen.push_back(std::string(store::sectionName(key.section)).substr(9) + " " + key.order +
                       "/" + key.activity + "/" + key.line);
    };
    store::showOrder(store, "A1", witness);
    EXPECT_THAT(seen, ElementsAre("cordr A1//", "cactv A1/10/", "cactv A1/20/", "cmatl A1/10/1",
                                  "cmatl A1/10/2", "clabr A1/20/1", "cothr A1/10/1"));
    seen.clear();
    store::showActivity(store, "A1", "20", witness);
    EXPECT_THAT(seen, ElementsAre("cactv A1/20/", "clabr A1/20/1"));
}

}  // namespace
}  // namespace tandril::test
