#include "store/order_store.h"

#include <gtest/gtest.h>

#include <memory>

#include "store/records.h"

namespace tandril::test {
namespace {

using store::OrderStore;
using store::Section;

TEST(OrderStore, TakesNoDocumentWithAnotherRoot) {
    EXPECT_FALSE(OrderStore::from(document("<other/>")));
    EXPECT_FALSE(OrderStore::from(std::nullopt));
    EXPECT_TRUE(OrderStore::from(document("<harbrook/>")));
}

TEST(OrderStore, AnEmptyStoreHoldsNothing) {
    const OrderStore store = OrderStore::from(document(store::emptyStore)).value();
    EXPECT_FALSE(store.order("A1"));
    EXPECT_FALSE(store.activityGroup("A1"));
    EXPECT_FALSE(store.activity("A1", "10"));
    EXPECT_FALSE(store.line(Section::Material, "A1", "10", "1"));
    EXPECT_EQ(store.orderStatus("A1"), "");
    EXPECT_EQ(store.activityStatus("A1", "10"), "");
    EXPECT_TRUE(store.candidates(Section::Orders).empty());
    EXPECT_FALSE(store.isChanged());
}

TEST(OrderStore, OfTwoRecordsWithTheSameKeyTheFirstCounts) {
    OrderStore store =
        storeOf(orders(order("A1", "O", "15") + order("A1", "N", "20")) +
                activities(group("A1", activity("10", "O", "15") + activity("10", "N", "20")) +
                           group("A1", activity("20", "O", "35"))) +
                other(costGroup("A1", "10", line("1", "O", "first") + line("1", "O", "second"))));
    EXPECT_EQ(store.orderStatus("A1"), "15");
    EXPECT_EQ(store.activityStatus("A1", "10"), "15");
    EXPECT_EQ(store.activityStatus("A1", "20"), "");
    EXPECT_EQ(xml::text(store.line(Section::Other, "A1", "10", "1")), "first");
    EXPECT_EQ(store.groups(Section::Activities, "A1").size(), 2U);
    store.remove(Section::Orders, store.order("A1"));
    EXPECT_EQ(store.orderStatus("A1"), "20");
}

std::string someSections() {
    return "<harbrook>" + activities(group("A1", activity("10", "O", "15"))) + "<x/>" +
           material(costGroup("A1", "10", line("1", "O", "first"))) +
           orders(order("A1", "O", "20")) + orders(order("A2", "N", "35")) + "</harbrook>";
}

std::optional<xml::Document> dividedBySections(std::string_view text) {
    return xml::Document::decode(std::string(text), store::sectionNames);
}

TEST(OrderStore, WhoReadsItNeedsNotAllOfIt) {
    const std::unique_ptr<const OrderStore> store =
        OrderStore::toRead(dividedBySections(someSections()));
    EXPECT_EQ(store->activityStatus("A1", "10"), "15");
    EXPECT_FALSE(store->section(Section::Other));
    EXPECT_EQ(xml::text(store->line(Section::Material, "A1", "10", "1")), "first");
    EXPECT_FALSE(store->document().isWhole());
    EXPECT_EQ(store->orderStatus("A2"), "35");
    EXPECT_EQ(store->candidates(Section::Orders).size(), 2U);
    EXPECT_EQ(xml::toText(store->section(Section::Orders)), orders(order("A1", "O", "20")));
    EXPECT_EQ(store->document().text(), someSections());
    EXPECT_FALSE(OrderStore::toRead(document("<other/>")));
    EXPECT_FALSE(OrderStore::toRead(std::nullopt));
}

TEST(OrderStore, WhoChangesItHasAllOfIt) {
    OrderStore store = OrderStore::from(dividedBySections(someSections())).value();
    EXPECT_TRUE(store.document().isWhole());
    store.remove(Section::Orders, store.order("A2"));
    store.setText(xml::elementAt(store.activity("A1", "10"), 0), "35");
    store.appendGroup(Section::Other, "A1", "10");
    EXPECT_EQ(store.document().text(),
              "<harbrook>" + activities(group("A1", activity("10", "O", "35"))) + "<x/>" +
                  material(costGroup("A1", "10", line("1", "O", "first"))) +
                  orders(order("A1", "O", "20")) + orders("") +
                  other("<ServiceOrder ID=\"A1\" Activity=\"10\"/>") + "</harbrook>");
    EXPECT_TRUE(store.costGroup(Section::Other, "A1", "10"));
    EXPECT_TRUE(store.order("A1"));
}

TEST(OrderStore, KeysCompareExactlyAndAMissingOneIsEmpty) {
    const OrderStore store =
        storeOf(orders("<record><OrderStatus>15</OrderStatus></record>" + order("a1", "O", "20")) +
                activities("<ServiceOrder><x><s>35</s></x></ServiceOrder>"));
    EXPECT_EQ(store.orderStatus(""), "15");
    EXPECT_FALSE(store.order("A1"));
    EXPECT_EQ(store.activityStatus("", ""), "35");
}

TEST(OrderStore, OnlyRecordsAndGroupsAreLookedAmong) {
    const OrderStore store =
        storeOf(orders("<note ServiceOrder='A1'><s>15</s></note>") +
                activities("<group ID='A1'><x Activity='10'/></group>" +
                           group("A2", "<anything Activity=\"10\"><s>20</s></anything>")));
    EXPECT_FALSE(store.order("A1"));
    EXPECT_FALSE(store.activityGroup("A1"));
    EXPECT_EQ(store.activityStatus("A2", "10"), "20");
}

TEST(OrderStore, SectionsAreFoundAnywhereButInRecords) {
    const OrderStore store =
        storeOf("<deep>" + orders(order("A1", "O", "15")) + "</deep>" +
                orders(order("A2", "O", "20", orders(order("A3", "O", "20")))));
    EXPECT_TRUE(store.order("A1"));
    EXPECT_TRUE(store.order("A2"));
    EXPECT_FALSE(store.order("A3"));
    EXPECT_EQ(store.candidates(Section::Orders).size(), 2U);
}

TEST(OrderStore, AppendedRecordsAreFoundAndAMissingSectionIsMade) {
    OrderStore store = storeOf(activities(""));
    const xml::Document given = document(orders(order("A1", "N", "15")));
    store.append(Section::Orders, xml::elementAt(given.root(), 0));
    const xml::Node made = store.appendGroup(Section::Labour, "A1", "10");
    store.appendTo(made, xml::elementAt(given.root(), 0));
    EXPECT_TRUE(store.order("A1"));
    EXPECT_EQ(store.costGroup(Section::Labour, "A1", "10"), made);
    EXPECT_EQ(sectionsOf(store), activities("") + orders(order("A1", "N", "15")) +
                                     labour(costGroup("A1", "10", order("A1", "N", "15"))));
    EXPECT_TRUE(store.isChanged());
}

// Groups are looked up by order and by activity; the change comes before either, between them, or
// behind both.
TEST(OrderStore, GroupsAreFoundByBothTheirKeysWheneverTheyChange) {
    const std::string known = other(costGroup("A1", "10", line("1", "O", "x")) +
                                    costGroup("A1", "20", line("1", "O", "y")));
    for (const int lookUpsBefore : {0, 1, 2}) {
        OrderStore store = storeOf(known);
        if (lookUpsBefore >= 1) {
            EXPECT_EQ(store.groups(Section::Other, "A1").size(), 2U);
        }
        if (lookUpsBefore >= 2) {
            EXPECT_TRUE(store.costGroup(Section::Other, "A1", "10"));
        }
        const xml::Node added = store.appendGroup(Section::Other, "A1", "30");
        EXPECT_EQ(store.costGroup(Section::Other, "A1", "30"), added);
        EXPECT_EQ(store.groups(Section::Other, "A1").size(), 3U);
        store.remove(Section::Other, store.costGroup(Section::Other, "A1", "10"));
        EXPECT_FALSE(store.costGroup(Section::Other, "A1", "10"));
        EXPECT_EQ(store.groups(Section::Other, "A1").size(), 2U);
        const xml::Node last = store.appendGroup(Section::Other, "A1", "10");
        EXPECT_EQ(store.costGroup(Section::Other, "A1", "10"), last);
        EXPECT_EQ(store.groups(Section::Other, "A1").back(), last);
    }
}

TEST(OrderStore, MembersOfALargeGroupAreFoundThroughAllChanges) {
    std::string members;
    for (int i = 0; i < 100; ++i) {
        members += activity(std::to_string(i), "O", "15");
    }
    members += activity("7", "N", "20");  // a second one, which never counts
    OrderStore store = storeOf(activities(group("A1", members)));
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(store.activityStatus("A1", std::to_string(i)), "15") << i;
    }
    EXPECT_FALSE(store.activity("A1", "100"));
    store.removeMember(store.activity("A1", "99"));
    EXPECT_FALSE(store.activity("A1", "99"));
    store.removeMember(store.activity("A1", "7"));
    EXPECT_EQ(store.activityStatus("A1", "7"), "20");
    const xml::Document given = document(activity("200", "N", "35"));
    store.appendTo(store.activityGroup("A1"), given.root());
    EXPECT_EQ(store.activityStatus("A1", "200"), "35");
}

TEST(OrderStore, ATextThatIsSetToWhatItIsChangesNothing) {
    OrderStore store = storeOf(orders("<record ServiceOrder='A1'><s><![CDATA[15]]></s></record>"));
    EXPECT_FALSE(store.setText(xml::elementAt(store.order("A1"), 0), "15"));
    EXPECT_FALSE(store.isChanged());
    EXPECT_NE(sectionsOf(store).find("<![CDATA[15]]>"), std::string::npos);
    EXPECT_TRUE(store.setText(xml::elementAt(store.order("A1"), 0), "20"));
    EXPECT_TRUE(store.isChanged());
}

TEST(OrderStore, ChangesThatAreNotKeptAreTakenBack) {
    const std::string before =
        orders("<record ServiceOrder=\"A1\"><s>15<!-- c --><b>x</b></s><t/><u>z</u></record>") +
        activities(group("A1", activity("10", "NU", "15"), "NU"));
    OrderStore store = storeOf(before);
    const xml::Document given = document(activity("20", "O", "15"));
    {
        const store::Transaction transaction(store);
        store.setText(xml::elementAt(store.order("A1"), 0), "20");
        store.setText(xml::elementAt(store.order("A1"), 1), "new");
        store.setText(xml::elementAt(store.order("A1"), 2), "");
        store.setAttribute(store.order("A1"), "State", "M");
        store.apply(store::Event::Edited, store.activity("A1", "10"));
        store.appendTo(store.activityGroup("A1"), given.root());
        store.appendTo(store.appendGroup(Section::Other, "A1", "10"), given.root());
        EXPECT_TRUE(store.activity("A1", "20"));
    }
    EXPECT_EQ(sectionsOf(store), before);
    EXPECT_FALSE(store.isChanged());
    EXPECT_FALSE(store.activity("A1", "20"));
    EXPECT_FALSE(store.costGroup(Section::Other, "A1", "10"));
    EXPECT_TRUE(store.activity("A1", "10"));
}

TEST(OrderStore, ChangesThatAreKeptStay) {
    OrderStore store = storeOf(orders(order("A1", "O", "15")));
    {
        store::Transaction transaction(store);
        store.setText(xml::elementAt(store.order("A1"), 0), "20");
        transaction.keep();
    }
    EXPECT_EQ(sectionsOf(store), orders(order("A1", "O", "20")));
    EXPECT_TRUE(store.isChanged());
}

}  // namespace
}  // namespace tandril::test
