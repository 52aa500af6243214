#include "store/upload.h"

#include <gtest/gtest.h>

#include "store/records.h"

namespace tandril::test {
namespace {

struct Uploaded {
    std::string text;
    std::string sections;  // of the store, once the records are marked
};

Uploaded uploaded(std::string_view sections) {
    store::OrderStore store = storeOf(sections);
    store::Upload upload = store::makeUpload(store);
    store::markSent(store, upload);
    return {std::move(upload.text), sectionsOf(store)};
}

TEST(Upload, HoldsWhatChangedAndMarksIt) {
    const Uploaded u = uploaded(
        orders(order("A1", "M", "15") + order("A2", "O", "15") + order("A3", "N", "15")) +
        activities(group("A1", activity("10", "O", "15") + activity("20", "M", "15"), "O") +
                   group("A3", activity("_1", "N", "15"), "N")) +
        material(costGroup("A2", "10", line("1", "N", "x") + line("2", "MU", "y"), "O")) +
        labour("") + other("") + registrations(""));
    EXPECT_EQ(u.text,
              element("harbrook", orders(order("A1", "M", "15") + order("A3", "N", "15")) +
                                      activities(group("A1", activity("20", "M", "15"), "O") +
                                                 group("A3", activity("_1", "N", "15"), "N")) +
                                      material(costGroup("A2", "10", line("1", "N", "x"), "O")) +
                                      labour("") + other("") + registrations("")));
    EXPECT_EQ(
        u.sections,
        orders(order("A1", "MU", "15") + order("A2", "O", "15") + order("A3", "NU", "15")) +
            activities(group("A1", activity("10", "O", "15") + activity("20", "MU", "15"), "O") +
                       group("A3", activity("_1", "NU", "15"), "NU")) +
            material(costGroup("A2", "10", line("1", "NU", "x") + line("2", "MU", "y"), "O")) +
            labour("") + other("") + registrations(""));
}

TEST(Upload, ASecondOneIsEmpty) {
    const Uploaded first = uploaded(orders(order("A1", "M", "15")) +
                                    activities(group("A1", activity("10", "N", "15"))));
    EXPECT_NE(first.text, "");
    const Uploaded second = uploaded(first.sections);
    EXPECT_EQ(second.text, "");
    EXPECT_EQ(second.sections, first.sections);
}

TEST(Upload, AnOrderWithoutActivitiesStaysOut) {
    for (const std::string& groups : {std::string(), group("A1", ""), group("A2", "<a/>")}) {
        const std::string sections = orders(order("A1", "N", "15")) + activities(groups);
        const Uploaded u =
            uploaded(orders(order("A1", "N", "15")) +
                     other(costGroup("A9", "1", line("1", "N", ""))) + activities(groups));
        EXPECT_EQ(u.text.find("OrderStatus"), std::string::npos) << sections;
        EXPECT_NE(u.sections.find(order("A1", "N", "15")), std::string::npos);
    }
}

TEST(Upload, HourRegistrationsAloneMakeNone) {
    const std::string hours = registrations(line("1", "N", "x") + line("2", "O", "y"));
    EXPECT_EQ(uploaded(orders("") + hours).text, "");
    EXPECT_EQ(uploaded(orders("") + activities(group("A1", "")) + hours).text, "");
    EXPECT_EQ(
        uploaded(orders(order("A1", "M", "15")) +
                 activities(group("A1", activity("10", "O", "15"))) + hours)
            .text,
        element("harbrook", orders(order("A1", "M", "15")) + activities(group("A1", "")) + hours));
}

TEST(Upload, RecordsWithoutAKnownStateGoOutUnmarked) {
    const std::string sections =
        orders("<record ServiceOrder=\"A1\"><s>15</s></record>") +
        activities(group("A1", "<record Activity=\"10\" State=\"X\"/>", "N"));
    const Uploaded u = uploaded(sections);
    EXPECT_EQ(u.text, element("harbrook", sections));
    EXPECT_EQ(u.sections, sections);
}

TEST(Upload, OfTwoRecordsWithTheSameKeyTheFirstIsMarked) {
    const std::string group10 = activities(group("A1", activity("10", "O", "15")));
    const Uploaded u = uploaded(orders(order("A1", "O", "15") + order("A1", "N", "15")) + group10);
    EXPECT_EQ(u.text,
              element("harbrook", orders(order("A1", "N", "15")) + activities(group("A1", ""))));
    EXPECT_EQ(u.sections, orders(order("A1", "O", "15") + order("A1", "N", "15")) + group10);
}

// The group that counts is the first one, whatever it holds.
TEST(Upload, OfTwoGroupsWithTheSameKeysTheMembersOfTheFirstAreMarked) {
    const std::string twice =
        material(costGroup("A1", "10", line("1", "O", "a") + line("2", "N", "b"), "N") +
                 costGroup("A1", "10", line("2", "N", "c") + line("3", "N", "d"), "N"));
    const Uploaded u = uploaded(orders("") + twice);
    EXPECT_EQ(
        u.text,
        element("harbrook",
                orders("") + material(costGroup("A1", "10", line("2", "N", "b"), "N") +
                                      costGroup("A1", "10",
                                                line("2", "N", "c") + line("3", "N", "d"), "N"))));
    EXPECT_EQ(u.sections,
              orders("") +
                  material(costGroup("A1", "10", line("1", "O", "a") + line("2", "NU", "b"), "NU") +
                           costGroup("A1", "10", line("2", "N", "c") + line("3", "N", "d"), "N")));
}

TEST(Upload, KeepsCommentsAndWhatItDoesNotKnow) {
    const std::string sections =
        "<!-- c -->" + orders("<!-- d -->" + order("A1", "M", "15") + "<note/>") +
        activities(group("A1", activity("10", "N", "15"))) + "<more a=\"1\">text</more>";
    EXPECT_EQ(uploaded(sections).text, element("harbrook", sections));
}

}  // namespace
}  // namespace tandril::test
