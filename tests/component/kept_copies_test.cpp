#include "component/kept_copies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "component/store_workstation.h"

namespace tandril::test {
namespace {

using kept_copies::As;
using kept_copies::Copy;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string finished =
    orders(order("A1", "MU", "20")) + activities(group("A1", activity("10", "NU", "20"), "NU"));

// A component whose order A1 was purged, with the activity.
struct Purged : StoreWorkstation {
    Purged() {
        putSections(finished);
        client.deleteCompletedOrders("");
    }
    std::vector<std::string> ids() {
        std::vector<std::string> found;
        for (const Copy& copy : kept_copies::list(module)) {
            found.push_back(copy.id);
        }
        return found;
    }
};

TEST(KeptCopies, AreListed) {
    Purged w;
    const std::vector<Copy> copies = kept_copies::list(w.module);
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(copies[1].id, "2");
    EXPECT_EQ(copies[1].time, "15/11/2026 11:59:39");
    EXPECT_EQ(copies[1].reason, "purge");
    EXPECT_EQ(copies[1].key, (store::RecordKey{store::Section::Activities, "A1", "10"}));
    EXPECT_EQ(copies[1].state, "NU");
    StoreWorkstation other;
    EXPECT_THAT(kept_copies::list(other.module), IsEmpty());
}

TEST(KeptCopies, ComeBackAsTheyWere) {
    Purged w;
    EXPECT_EQ(w.sections(), orders("") + activities(""));
    const auto result = kept_copies::restore(w.module, {"2", "1"}, As::ItWas);
    EXPECT_THAT(result.restored, ElementsAre("1", "2"));
    EXPECT_EQ(w.sections(), finished);
    EXPECT_THAT(w.ids(), IsEmpty());
}

TEST(KeptCopies, ComeBackAsUnsent) {
    Purged w;
    kept_copies::restore(w.module, {"1", "2"}, As::Unsent);
    EXPECT_EQ(w.sections(), orders(order("A1", "M", "20")) +
                                activities(group("A1", activity("10", "N", "20"), "N")));
}

TEST(KeptCopies, StayWhileTheStoreHasTheRecord) {
    Purged w;
    w.putSections(orders(order("A1", "O", "15")) + activities(""));
    const auto result = kept_copies::restore(w.module, {"1", "2"}, As::ItWas);
    EXPECT_THAT(result.restored, ElementsAre("2"));
    EXPECT_THAT(result.existing, ElementsAre("1"));
    EXPECT_THAT(w.ids(), ElementsAre("1"));
}

TEST(KeptCopies, OfWhichOneIsUnknownAllStay) {
    Purged w;
    const auto result = kept_copies::restore(w.module, {"1", "9"}, As::ItWas);
    EXPECT_THAT(result.unknown, ElementsAre("9"));
    EXPECT_THAT(result.restored, IsEmpty());
    EXPECT_EQ(w.sections(), orders("") + activities(""));
}

TEST(KeptCopies, StayWhenTheStoreCannotBeSaved) {
    Purged w;
    w.machine.faults.failOn(FileOperation::Replace, 2);
    EXPECT_THROW(kept_copies::restore(w.module, {"1", "2"}, As::ItWas), Fault);
    EXPECT_EQ(w.sections(), orders("") + activities(""));
    EXPECT_THAT(w.ids(), ElementsAre("1", "2"));
}

TEST(KeptCopies, NeedFilesThatLoad) {
    Purged w;
    w.putStore("damaged");
    EXPECT_THROW(kept_copies::restore(w.module, {"1"}, As::ItWas), Fault);
    w.machine.files.put(paths::removed, "damaged");
    EXPECT_THROW(kept_copies::list(w.module), Fault);
}

}  // namespace
}  // namespace tandril::test
