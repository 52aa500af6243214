#include "forms/kinds.h"

#include <gtest/gtest.h>

namespace tandril::test {
namespace {

using forms::formKind;
using forms::RecordKey;

TEST(FormKind, NumbersNameTheKinds) {
    EXPECT_EQ(formKind("1")->word, "order");
    EXPECT_EQ(formKind("2")->word, "activity");
    EXPECT_EQ(formKind("3")->word, "material");
    EXPECT_EQ(formKind("4")->word, "labor");
    EXPECT_EQ(formKind("5")->word, "other");
}

TEST(FormKind, OtherNumbersNameNone) {
    for (const std::string_view number : {"", "0", "6", "01", " 1", "order"}) {
        EXPECT_EQ(formKind(number), nullptr) << number;
    }
}

TEST(FormKind, HourRegistrationsAreLabourLinesWithAWordOfTheirOwn) {
    EXPECT_EQ(forms::hourRegistrationKind().word, "hra");
    EXPECT_EQ(forms::hourRegistrationKind().section, store::Section::Labour);
    EXPECT_EQ(forms::hourRegistrationKind().number, "4");
}

TEST(FormKind, FormNameHoldsTheKeyOfItsLevel) {
    const RecordKey key{"A1", "10", "5"};
    EXPECT_EQ(forms::formName(*formKind("1"), key), "order_A1");
    EXPECT_EQ(forms::formName(*formKind("2"), key), "activity_A1_10");
    EXPECT_EQ(forms::formName(*formKind("5"), key), "other_A1_10_5");
    EXPECT_EQ(forms::formName(forms::hourRegistrationKind(), RecordKey{"", "", "5"}), "hra___5");
    EXPECT_EQ(forms::formName(forms::hourRegistrationKind(), "_5"), "hra__5");
}

TEST(FormKind, KeyKeepsThePartsOfItsLevelOnly) {
    const RecordKey key{"A1", "10", "5"};
    const RecordKey order = forms::keyAt(forms::Level::Order, key);
    EXPECT_EQ(order.order + "|" + order.activity + "|" + order.line, "A1||");
    const RecordKey activity = forms::keyAt(forms::Level::Activity, key);
    EXPECT_EQ(activity.order + "|" + activity.activity + "|" + activity.line, "A1|10|");
    const RecordKey line = forms::keyAt(forms::Level::Line, key);
    EXPECT_EQ(line.order + "|" + line.activity + "|" + line.line, "A1|10|5");
}

}  // namespace
}  // namespace tandril::test
