#include "store/edit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/records.h"

namespace tandril::test {
namespace {

using store::CheckFinding;
using store::RecordKey;
using store::Section;
using testing::ElementsAre;
using testing::IsEmpty;

struct Edited {
    store::ChangeResult result;
    std::string sections;
    bool isChanged;
};

Edited edited(std::string_view before, std::string_view changes, ScriptedCheck& check) {
    store::OrderStore store = storeOf(before);
    const xml::Document document = test::document(element("any", changes));
    store::ChangeResult result = store::edit(store, document.root(), check);
    return {std::move(result), sectionsOf(store), store.isChanged()};
}

Edited edited(std::string_view before, std::string_view changes) {
    ScriptedCheck check;
    return edited(before, changes, check);
}

std::string refusalOf(const Edited& edit) {
    return edit.result.refusal ? std::string(edit.result.refusal->code) + edit.result.refusal->text
                               : "none";
}

std::string described(std::string_view state, std::string_view text) {
    return order("A1", state, "15", element("Description", text));
}

TEST(Edit, ReplacesTextsAndMovesTheStateOn) {
    struct Case {
        std::string_view before, after;
    };
    for (const Case& c : {Case{"O", "M"}, {"M", "M"}, {"MU", "M"}, {"N", "N"}, {"NU", "N"}}) {
        const Edited e = edited(orders(described(c.before, "old")), orders(described("X", "new")));
        EXPECT_EQ(refusalOf(e), "none");
        EXPECT_EQ(e.sections, orders(described(c.after, "new"))) << c.before;
    }
}

TEST(Edit, IgnoresFieldsThatTheStoredRecordLacks) {
    const Edited e = edited(orders(order("A1", "O", "15")),
                            orders("<record ServiceOrder='A1'><New>1</New></record>"));
    EXPECT_EQ(e.sections, orders(order("A1", "M", "15")));
}

TEST(Edit, OfARecordThatIsNotThereIsRefused) {
    const std::string before = orders(order("A1", "O", "15")) +
                               activities(group("A1", activity("10", "O", "15"))) +
                               material(costGroup("A1", "10", line("1", "O", "x")));
    const std::string misses[] = {
        orders(order("A2", "O", "15")),
        activities(group("A1", activity("20", "O", "15"))),
        activities(group("A2", activity("10", "O", "15"))),
        material(costGroup("A1", "10", line("2", "O", "x"))),
        material(costGroup("A1", "20", line("1", "O", "x"))),
        labour(costGroup("A1", "10", line("1", "O", "x"))),
    };
    for (const std::string& miss : misses) {
        const Edited e = edited(before, miss);
        EXPECT_EQ(refusalOf(e), "SLBEU0323") << miss;
        EXPECT_EQ(e.sections, before);
    }
}

TEST(Edit, WithoutARecordOrWithAnUnknownSectionIsRefusedBeforeAnyCheck) {
    const std::string known = orders(order("A1", "O", "20"));
    const std::string documents[] = {
        "",
        "text",
        orders(""),
        orders("<note ServiceOrder='A1'/>"),
        activities(group("A1", "")),
        activities(order("A1", "O", "20")),
        known + registrations(line("1", "O", "x")),
        known + "<unknown/>",
        order("A1", "O", "20"),
    };
    for (const std::string& document : documents) {
        ScriptedCheck check;
        const Edited e = edited(known, document, check);
        EXPECT_EQ(refusalOf(e), "SLBEU0323") << document;
        EXPECT_THAT(check.asked, IsEmpty());
        EXPECT_FALSE(e.isChanged);
    }
}

TEST(Edit, TakesAllRecordsOrNone) {
    const std::string before = orders(order("A1", "O", "15") + order("A2", "NU", "15")) +
                               activities(group("A1", activity("10", "MU", "15"), "NU"));
    const std::string good = orders(order("A1", "O", "20") + order("A2", "O", "20")) +
                             activities(group("A1", activity("10", "O", "20")));
    EXPECT_EQ(edited(before, good).sections,
              orders(order("A1", "M", "20") + order("A2", "N", "20")) +
                  activities(group("A1", activity("10", "M", "20"), "NU")));
    const Edited refused = edited(before, good + other(costGroup("A1", "10", line("1", "O", ""))));
    EXPECT_EQ(refusalOf(refused), "SLBEU0323");
    EXPECT_EQ(refused.sections, before);
    EXPECT_FALSE(refused.isChanged);
    EXPECT_THAT(refused.result.resent, IsEmpty());
}

TEST(Edit, IsCheckedAgainstTheStoredRecord) {
    const std::string before = orders(order("A1", "O", "15")) +
                               activities(group("A1", activity("10", "O", "20"))) +
                               labour(costGroup("A1", "10", line("1", "O", "x")));
    ScriptedCheck check;
    edited(before, labour(costGroup("A1", "10", line("1", "", "y"))), check);
    EXPECT_THAT(check.asked, ElementsAre("ccsocservclabr " + line("1", "O", "x") + " edit " +
                                         line("1", "", "y") + " activity 20"));
}

TEST(Edit, FailuresOfTheCheckAreJoinedAndFaultsNoted) {
    ScriptedCheck check;
    check.findings = {{{CheckFinding::Kind::Failure, "a must be filled"},
                       {CheckFinding::Kind::LookUpFault, "no database"},
                       {CheckFinding::Kind::Failure, "b is wrong"}}};
    const Edited e = edited(orders(order("A1", "O", "15")), orders(order("A1", "O", "20")), check);
    EXPECT_EQ(refusalOf(e), "a must be filled; b is wrong");
    EXPECT_THAT(e.result.lookUpFaults, ElementsAre("no database"));
    EXPECT_FALSE(e.isChanged);
}

TEST(Edit, AFaultOfTheLookUpAloneDoesNotRefuse) {
    ScriptedCheck check;
    check.findings = {{{CheckFinding::Kind::LookUpFault, "no database"}}};
    const Edited e = edited(orders(order("A1", "O", "15")), orders(order("A1", "O", "20")), check);
    EXPECT_EQ(refusalOf(e), "none");
    EXPECT_THAT(e.result.lookUpFaults, ElementsAre("no database"));
    EXPECT_EQ(e.sections, orders(order("A1", "M", "20")));
}

TEST(Edit, TheFirstRefusalInDocumentOrderStands) {
    ScriptedCheck check;
    check.findings = {{}, {{CheckFinding::Kind::Failure, "second"}}};
    const Edited e = edited(
        orders(order("A1", "O", "15") + order("A2", "O", "15")),
        orders(order("A1", "O", "20") + order("A2", "O", "20") + order("A3", "O", "20")), check);
    EXPECT_EQ(refusalOf(e), "second");
}

TEST(Edit, OfASentRecordMakesItsGroupNewAgain) {
    const Edited e = edited(activities(group("A1", activity("10", "NU", "15"), "NU")),
                            activities(group("A1", activity("10", "", "15"))));
    EXPECT_EQ(e.sections, activities(group("A1", activity("10", "N", "15"), "N")));
    EXPECT_THAT(e.result.resent, ElementsAre(RecordKey{Section::Activities, "A1", "10"}));
}

TEST(Edit, OfARecordThatWasNotSentNamesNothingAsResent) {
    for (const std::string_view state : {"O", "N", "M"}) {
        EXPECT_THAT(edited(orders(order("_1", state, "15")) +
                               activities(group("_1", activity("10", "NU", "15"))),
                           orders(order("_1", "", "15")))
                        .result.resent,
                    IsEmpty());
    }
}

TEST(Edit, OfASentProvisionalOrderResendsAllBelowIt) {
    const std::string before =
        orders(order("_1", "NU", "15") + order("A1", "NU", "15")) +
        activities(group("_1", activity("10", "NU", "15") + activity("20", "MU", "15"), "NU") +
                   group("A1", activity("10", "NU", "15"), "NU")) +
        material(costGroup("_1", "10", line("1", "NU", "x"), "NU") +
                 costGroup("_1", "20", line("1", "O", "x"), "NU"));
    const Edited e = edited(before, orders(order("_1", "", "15")));
    EXPECT_EQ(
        e.sections,
        orders(order("_1", "N", "15") + order("A1", "NU", "15")) +
            activities(group("_1", activity("10", "N", "15") + activity("20", "MU", "15"), "N") +
                       group("A1", activity("10", "NU", "15"), "NU")) +
            material(costGroup("_1", "10", line("1", "N", "x"), "N") +
                     costGroup("_1", "20", line("1", "O", "x"), "N")));
    EXPECT_THAT(e.result.resent, ElementsAre(RecordKey{Section::Orders, "_1"},
                                             RecordKey{Section::Activities, "_1", "10"},
                                             RecordKey{Section::Material, "_1", "10", "1"}));
}

TEST(Edit, OfASentActivityResendsItsLinesWhenOneNumberIsProvisional) {
    struct Case {
        std::string_view order, activity;
        bool resends;
    };
    for (const Case& c : {Case{"A1", "_10", true}, {"_1", "10", true}, {"A1", "10", false}}) {
        const std::string before =
            activities(group(c.order, activity(c.activity, "NU", "15"), "O")) +
            other(costGroup(c.order, c.activity, line("1", "NU", "x"), "NU") +
                  costGroup(c.order, "99", line("1", "NU", "x"), "NU"));
        const std::string_view after = c.resends ? "N" : "NU";
        const Edited e = edited(before, activities(group(c.order, activity(c.activity, "", "15"))));
        EXPECT_EQ(e.sections,
                  activities(group(c.order, activity(c.activity, "N", "15"), "O")) +
                      other(costGroup(c.order, c.activity, line("1", after, "x"), after) +
                            costGroup(c.order, "99", line("1", "NU", "x"), "NU")));
    }
}

}  // namespace
}  // namespace tandril::test
