#include "store/add.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/records.h"

namespace tandril::test {
namespace {

using store::CheckFinding;
using testing::ElementsAre;
using testing::IsEmpty;

struct Added {
    store::ChangeResult result;
    std::string sections;
    bool isChanged;
};

Added added(std::string_view before, std::string_view records, ScriptedCheck& check) {
    store::OrderStore store = storeOf(before);
    const xml::Document document = test::document(element("any", records));
    store::ChangeResult result = store::add(store, document.root(), check);
    return {std::move(result), sectionsOf(store), store.isChanged()};
}

Added added(std::string_view before, std::string_view records) {
    ScriptedCheck check;
    return added(before, records, check);
}

std::string refusalOf(const Added& add) {
    return add.result.refusal ? std::string(add.result.refusal->code) + add.result.refusal->text
                              : "none";
}

TEST(Add, AnOrderBecomesANewOne) {
    for (const std::string_view given :
         {"<record ServiceOrder=\"_1\" State=\"O\"><s>15</s></record>",
          "<record ServiceOrder=\"_1\"><s>15</s></record>"}) {
        const Added a = added(orders(order("A1", "O", "15")), orders(given));
        EXPECT_EQ(refusalOf(a), "none");
        EXPECT_EQ(a.sections, orders(order("A1", "O", "15") +
                                     "<record ServiceOrder=\"_1\" State=\"N\"><s>15</s></record>"));
    }
}

TEST(Add, AMissingGroupIsMadeAsANewOne) {
    EXPECT_EQ(added(activities(""), activities(group("A1", activity("_1", "O", "15")))).sections,
              activities(group("A1", activity("_1", "N", "15"), "N")));
    EXPECT_EQ(added(other(""), other(costGroup("A1", "10", line("_1", "", "x"), "MU"))).sections,
              other(costGroup("A1", "10", line("_1", "N", "x"), "N")));
}

TEST(Add, ToAGroupThatWasSentMakesItNewAgain) {
    for (const auto& [before, after] :
         {std::pair("NU", "N"), {"N", "N"}, {"O", "O"}, {"MU", "MU"}}) {
        EXPECT_EQ(added(labour(costGroup("A1", "10", line("1", "O", "x"), before)),
                        labour(costGroup("A1", "10", line("_1", "O", "y"))))
                      .sections,
                  labour(costGroup("A1", "10", line("1", "O", "x") + line("_1", "N", "y"), after)));
    }
}

TEST(Add, WhatThereIsAlreadyIsRefused) {
    const std::string before = orders(order("A1", "O", "15")) +
                               activities(group("A1", activity("10", "O", "15"))) +
                               material(costGroup("A1", "10", line("1", "O", "x"))) +
                               labour(costGroup("A1", "10", line("1", "O", "x"))) +
                               other(costGroup("A1", "10", line("1", "O", "x")));
    const std::pair<std::string, std::string> cases[] = {
        {orders(order("A1", "N", "15")), "SLBEU0324"},
        {activities(group("A1", activity("10", "N", "15"))), "SLBEU0325"},
        {material(costGroup("A1", "10", line("1", "N", "x"))), "SLBEU0326"},
        {labour(costGroup("A1", "10", line("1", "N", "x"))), "SLBEU0326"},
        {other(costGroup("A1", "10", line("1", "N", "x"))), "SLBEU0326"},
    };
    for (const auto& [given, code] : cases) {
        const Added a = added(before, given);
        EXPECT_EQ(refusalOf(a), code);
        EXPECT_EQ(a.sections, before);
        EXPECT_FALSE(a.isChanged);
    }
}

TEST(Add, TheSameRecordTwiceIsRefusedAsAWhole) {
    const Added a = added(orders(""), orders(order("_1", "N", "15") + order("_1", "N", "15")));
    EXPECT_EQ(refusalOf(a), "SLBEU0324");
    EXPECT_EQ(a.sections, orders(""));
    EXPECT_FALSE(a.isChanged);
}

TEST(Add, WithoutARecordOrWithAnUnknownSectionIsRefusedBeforeAnyCheck) {
    for (const std::string& document :
         {std::string(), std::string("text"), orders(""), activities(group("A1", "")),
          registrations(line("1", "N", "x")), orders(order("_1", "N", "15")) + "<unknown/>"}) {
        ScriptedCheck check;
        EXPECT_EQ(refusalOf(added(orders(""), document, check)), "SLBEU0269") << document;
        EXPECT_THAT(check.asked, IsEmpty());
    }
}

TEST(Add, OnlyOrdersAreChecked) {
    ScriptedCheck check;
    added("",
          activities(group("_1", activity("_1", "N", "15"))) + orders(order("_1", "N", "15")) +
              other(costGroup("_1", "_1", line("_1", "N", "x"))),
          check);
    EXPECT_THAT(check.asked, ElementsAre("ccsocservcordr " + order("_1", "N", "15")));
}

TEST(Add, ARefusedOrderTakesTheRestOfTheDocumentBack) {
    ScriptedCheck check;
    check.findings = {{{CheckFinding::Kind::Failure, "bad"}}};
    const std::string before = activities(group("A1", activity("10", "NU", "15"), "NU"));
    const Added a = added(before,
                          activities(group("A1", activity("_1", "N", "15"))) +
                              material(costGroup("A1", "_1", line("_1", "N", "x"))) +
                              orders(order("_1", "N", "15")),
                          check);
    EXPECT_EQ(refusalOf(a), "bad");
    EXPECT_EQ(a.sections, before);
    EXPECT_FALSE(a.isChanged);
}

TEST(Add, MakesAMissingSectionAtTheEndOfTheStore) {
    EXPECT_EQ(added(labour(""), orders(order("_1", "N", "15"))).sections,
              labour("") + orders(order("_1", "N", "15")));
}

TEST(Add, FindsTheGivenHourRegistration) {
    const std::string record = line("_1", "N", "x");
    for (const std::string& text :
         {"<a>" + record + "</a>", "<harbrook>" + registrations(record) + "</harbrook>"}) {
        const xml::Document document = test::document(text);
        EXPECT_EQ(xml::toText(store::givenHourRegistration(document.root())), record);
    }
    for (const std::string_view text : {"<a/>", "<a>text</a>", "<a><ccsocservchra/></a>"}) {
        const xml::Document document = test::document(text);
        EXPECT_FALSE(store::givenHourRegistration(document.root())) << text;
    }
}

}  // namespace
}  // namespace tandril::test
