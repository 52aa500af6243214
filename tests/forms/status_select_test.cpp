#include "forms/status_select.h"

#include <gtest/gtest.h>

#include "forms/one_field.h"

namespace tandril::test {
namespace {

using forms::FormMode;
using forms::statusSelect;
using store::Section;

constexpr std::string_view threeEntries =
    "<i Id='15' Value='Open'/><i Id='20' Value='Done'/><i Id='35' Value='Closed'/>";

std::string activitySelect(FormMode mode, std::string_view value,
                           std::string_view entries = threeEntries) {
    const OneField field(Section::Activities, "ActivityStatus", "LABEL='Label'", entries);
    const std::string cell = statusSelect(field.withValue(value), mode);
    const std::string opening = "<td>&nbsp;<SELECT name=ActivityStatus id=ActivityStatus>";
    const std::string closing = "</SELECT></td>";
    EXPECT_TRUE(cell.starts_with(opening) && cell.ends_with(closing)) << cell;
    return cell.substr(opening.size(), cell.size() - opening.size() - closing.size());
}

struct ActivityCase {
    FormMode mode;
    const char* value;
    const char* options;
};

constexpr ActivityCase activityCases[] = {
    {FormMode::Modify, "15", "<OPTION value=15 selected>Open<OPTION value=20 >Done"},
    {FormMode::Modify, "20", "<OPTION value=20 >Done"},
    {FormMode::Modify, "35", "<OPTION value=35 selected>Closed"},
    {FormMode::Modify, "", ""},
    {FormMode::Modify, "99", ""},
    {FormMode::New, "15", "<OPTION value=15 selected>Open<OPTION value=20 >Done"},
    {FormMode::New, "20", "<OPTION value=15 selected>Open<OPTION value=20 >Done"},
    {FormMode::New, "35", "<OPTION value=35 >Closed<OPTION value=20 >Done"},
    {FormMode::New, "", ""},
    {FormMode::New, "99", ""},
};

TEST(StatusSelect, ActivityOffersWhatMayFollowItsStatus) {
    for (const ActivityCase& row : activityCases) {
        EXPECT_EQ(activitySelect(row.mode, row.value), row.options)
            << forms::modeName(row.mode) << " " << row.value;
    }
}

TEST(StatusSelect, ActivityTakesEntriesByPositionNotByCode) {
    EXPECT_EQ(activitySelect(FormMode::Modify, "15", "<i Id='A' Value='1'/><i Id='B' Value='2'/>"),
              "<OPTION value=A selected>1<OPTION value=B >2");
}

TEST(StatusSelect, EntryThatTheListLacksIsLeftOut) {
    EXPECT_EQ(activitySelect(FormMode::Modify, "15", "<i Id='15' Value='Open'/>"),
              "<OPTION value=15 selected>Open");
    EXPECT_EQ(activitySelect(FormMode::Modify, "35", "<i Id='15' Value='Open'/>"), "");
    EXPECT_EQ(activitySelect(FormMode::Modify, "15", ""), "");
}

TEST(StatusSelect, ElementsWithoutCodeAreNoEntries) {
    EXPECT_EQ(
        activitySelect(FormMode::Modify, "20",
                       "<x/><i Id='15' Value='Open'/><y Value='-'/><i Id='20' Value='Done'/>"),
        "<OPTION value=20 >Done");
}

TEST(StatusSelect, OrderStatusIsAlwaysDisabled) {
    const OneField field(Section::Orders, "OrderStatus", "LABEL='Label'", threeEntries);
    EXPECT_EQ(statusSelect(field.withValue("20"), FormMode::Modify),
              "<td>&nbsp;<SELECT disabled=true name=OrderStatus id=OrderStatus>"
              "<OPTION value=15 >Open<OPTION value=20 selected>Done<OPTION value=35 >Closed"
              "</SELECT></td>");
    EXPECT_EQ(statusSelect(field.withValue("20"), FormMode::New),
              "<td>&nbsp;<SELECT disabled=true name=OrderStatus id=OrderStatus>"
              "<OPTION value=15 selected>Open</SELECT></td>");
}

TEST(StatusSelect, NewOrderWithoutValueListHasNoOptions) {
    const OneField field(Section::Orders, "OrderStatus", "LABEL='Label'");
    EXPECT_EQ(statusSelect(field.withValue("15"), FormMode::New),
              "<td>&nbsp;<SELECT disabled=true name=OrderStatus id=OrderStatus></SELECT></td>");
}

TEST(StatusSelect, AnyOtherFieldOffersItsWholeList) {
    const OneField field(Section::Material, "DeliveryType", "LABEL='Label'", threeEntries);
    for (const FormMode mode : {FormMode::Modify, FormMode::New}) {
        EXPECT_EQ(statusSelect(field.withValue("35"), mode),
                  "<td>&nbsp;<SELECT name=DeliveryType id=DeliveryType><OPTION value=15 >Open"
                  "<OPTION value=20 >Done<OPTION value=35 selected>Closed</SELECT></td>");
    }
}

TEST(StatusSelect, EveryEntryOfTheCodeIsSelected) {
    const OneField field(Section::Material, "DeliveryType", "LABEL='Label'",
                         "<i Id='1' Value='A'/><i Id='2' Value='B'/><i Id='1' Value='C'/>");
    EXPECT_EQ(statusSelect(field.withValue("1"), FormMode::Modify),
              "<td>&nbsp;<SELECT name=DeliveryType id=DeliveryType><OPTION value=1 selected>A"
              "<OPTION value=2 >B<OPTION value=1 selected>C</SELECT></td>");
}

}  // namespace
}  // namespace tandril::test
