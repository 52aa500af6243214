#include "store/removed_records.h"

#include <gtest/gtest.h>

#include "store/records.h"
#include "store/remove.h"

namespace tandril::test {
namespace {

using store::RecordKey;
using store::RemovedRecords;
using store::Section;

const std::string full = orders(order("A1", "MU", "20")) +
                         activities(group("A1", activity("10", "NU", "20"), "NU")) +
                         other(costGroup("A1", "10", line("1", "M", "o"), "O"));

std::string textOf(const RemovedRecords& removed) {
    std::string text;
    removed.content().writeTo([&](std::string_view piece) { text += piece; });
    return text;
}

// The copies of an order and of what belongs to it, as they are read from the file again.
RemovedRecords copiesOf(const store::OrderStore& store, std::string_view order) {
    RemovedRecords removed;
    store::showOrder(store, order, [&](const RecordKey& key, xml::Node record) {
        removed.add(key, record, RemovedRecords::Reason::Report, "15/11/2026 11:59:39");
    });
    EXPECT_TRUE(removed.isChanged());
    return RemovedRecords(document(textOf(removed)));
}

TEST(RemovedRecords, KeepsTimeReasonAndPlace) {
    const auto copies = document(textOf(copiesOf(storeOf(full), "A1")));
    EXPECT_EQ(xml::toText(xml::elementAt(copies.root(), 2)),
              "<Entry ID=\"3\" Time=\"15/11/2026 11:59:39\" Reason=\"report\" "
              "Section=\"ccsocservcothr\" Order=\"A1\" Activity=\"10\" CostLine=\"1\" "
              "GroupState=\"O\">" +
                  line("1", "M", "o") + "</Entry>");
}

TEST(RemovedRecords, PutsRecordsBackAsTheyWere) {
    store::OrderStore store = storeOf(full);
    const RemovedRecords removed = copiesOf(store, "A1");
    store::removeOrder(store, "A1");
    EXPECT_EQ(sectionsOf(store), orders("") + activities("") + other(""));
    for (const RemovedRecords::Entry& entry : removed.entries()) {
        EXPECT_TRUE(store::restore(store, entry));
    }
    EXPECT_EQ(sectionsOf(store), full);
}

// Long records and many of them: more than is kept or written in one piece.
TEST(RemovedRecords, ManyCopiesStandInTheirOrder) {
    const std::string longText(100'000, 'x');
    std::string records;
    std::string expected = "<Removed>";
    for (int i = 1; i <= 3000; ++i) {
        const std::string number = std::to_string(i);
        const std::string record =
            order(number, "M", "15", element("t", i % 1000 == 0 ? longText : number));
        records += record;
        expected.append("<Entry ID=\"").append(number);
        expected += "\" Time=\"t\" Reason=\"purge\" Section=\"ccsocservcordr\" Order=\"";
        expected.append(number).append("\" Activity=\"\" CostLine=\"\">");
        expected += record + "</Entry>";
    }
    const store::OrderStore store = storeOf(orders(records));
    RemovedRecords removed;
    for (const xml::Node record : store.candidates(Section::Orders)) {
        removed.add(store::OrderStore::keyOf(Section::Orders, record), record,
                    RemovedRecords::Reason::Purge, "t");
    }
    EXPECT_TRUE(textOf(removed) == expected + "</Removed>");
}

TEST(RemovedRecords, DoesNotPutBackWhatIsThere) {
    store::OrderStore store = storeOf(full);
    const RemovedRecords removed = copiesOf(store, "A1");
    for (const RemovedRecords::Entry& entry : removed.entries()) {
        EXPECT_FALSE(store::restore(store, entry));
    }
    EXPECT_FALSE(store.isChanged());
}

TEST(RemovedRecords, NumbersGoOnBehindTheHighest) {
    const store::OrderStore store = storeOf(full);
    RemovedRecords removed(document("<Removed><Entry ID='41'/><Entry ID='7'/></Removed>"));
    EXPECT_FALSE(removed.isChanged());
    removed.add({Section::Orders, "A1"}, store.order("A1"), RemovedRecords::Reason::Purge, "now");
    EXPECT_EQ(textOf(removed),
              "<Removed><Entry ID=\"41\"/><Entry ID=\"7\"/><Entry ID=\"42\" Time=\"now\" "
              "Reason=\"purge\" Section=\"ccsocservcordr\" Order=\"A1\" Activity=\"\" "
              "CostLine=\"\">" +
                  order("A1", "MU", "20") + "</Entry></Removed>");
    removed = RemovedRecords(document(textOf(removed)));
    const auto entries = removed.entries();
    ASSERT_EQ(entries.size(), 1U);  // the two others hold no record
    EXPECT_EQ(entries[0].id, "42");
    EXPECT_EQ(entries[0].reason, "purge");
    EXPECT_EQ(entries[0].key, (RecordKey{Section::Orders, "A1"}));
    removed.remove(entries[0]);
    EXPECT_TRUE(removed.entries().empty());
}

}  // namespace
}  // namespace tandril::test
