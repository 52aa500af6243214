#include "component/settings.h"

#include <gtest/gtest.h>

#include "component/workstation.h"

namespace tandril::test {
namespace {

struct Counters : testing::Test {
    Counters() { w.client.Initialize(); }
    Workstation w;
    Settings settings{w.machine.registry};
};

TEST_F(Counters, StartAtOneAndMoveOn) {
    EXPECT_EQ(settings.nextLocalId(LocalNumber::Order), 1U);
    EXPECT_EQ(settings.nextLocalId(LocalNumber::Order), 2U);
    EXPECT_EQ(settings.nextLocalId(LocalNumber::Activity), 1U);
    settings.flush();
    EXPECT_EQ(w.setting("OrderId"), "3");
    EXPECT_EQ(w.setting("ActivityId"), "2");
    EXPECT_EQ(w.setting("LineId"), "1");
}

TEST_F(Counters, GoOnPastSixteenBits) {
    w.machine.registry.setNumber(hklm, settingsKey, "LineId", 32767);
    EXPECT_EQ(settings.nextLocalId(LocalNumber::CostLine), 32767U);
    EXPECT_EQ(settings.nextLocalId(LocalNumber::CostLine), 32768U);
}

TEST(MissingCounter, ReadsAsZeroAndIsNotCreated) {
    Workstation w;
    Settings settings(w.machine.registry);
    EXPECT_EQ(settings.nextLocalId(LocalNumber::Order), 0U);
    EXPECT_EQ(settings.nextLocalId(LocalNumber::Order), 0U);
    EXPECT_EQ(w.machine.registry.dump(), "");
}

TEST_F(Counters, WaitForTheDiskButTheErrorTextDoesNot) {
    w.machine.registry.forgetSaves();
    settings.setError("x");
    settings.flush();
    settings.nextLocalId(LocalNumber::Order);
    settings.flush();
    settings.flush();
    EXPECT_EQ(w.machine.registry.saves(),
              (std::vector{platform::Durability::Relaxed, platform::Durability::Durable}));
}

}  // namespace
}  // namespace tandril::test
