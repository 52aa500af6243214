#include "forms/drop_downs.h"

#include <gtest/gtest.h>

#include "support/documents.h"

namespace tandril::test {
namespace {

TEST(DropDowns, OrdersAreListedInDocumentOrder) {
    const store::OrderStore store = storeOf(
        "<ccsocservcordr><record ServiceOrder='A1'/><other ServiceOrder='A2'/>"
        "<record ServiceOrder='_1'/><record/></ccsocservcordr>");
    EXPECT_EQ(forms::orderOptions(store),
              "<OPTION value=A1>A1</OPTION><OPTION value=_1>_1</OPTION>"
              "<OPTION value=></OPTION>");
}

TEST(DropDowns, StoreWithoutOrdersHasNoOptions) {
    EXPECT_EQ(forms::orderOptions(storeOf("")), "");
    EXPECT_EQ(forms::activityOptions(storeOf(""), "A1"), "");
}

TEST(DropDowns, ActivityShowsItsOrderToo) {
    const store::OrderStore store = storeOf(
        "<ccsocservcactv><ServiceOrder ID='A1'><a Activity='10'/></ServiceOrder>"
        "</ccsocservcactv>");
    EXPECT_EQ(forms::activityOptions(store, "A1"), "<OPTION value=10>A1 - 10</OPTION>");
}

TEST(DropDowns, OrderWithoutActivitiesHasNoOptions) {
    const store::OrderStore store = storeOf(
        "<ccsocservcordr><record ServiceOrder='A1'/></ccsocservcordr>"
        "<ccsocservcactv><ServiceOrder ID='A1'/><ServiceOrder ID='A2'><a Activity='10'/>"
        "</ServiceOrder></ccsocservcactv>");
    EXPECT_EQ(forms::activityOptions(store, "A1"), "");
}

TEST(DropDowns, AllGroupsOfTheOrderAreTaken) {
    const store::OrderStore store = storeOf(
        "<ccsocservcactv><ServiceOrder ID='A1'><a Activity='10'/><b Activity='20'/></ServiceOrder>"
        "<ServiceOrder ID='A2'><a Activity='30'/></ServiceOrder>"
        "<ServiceOrder ID='A1'><a Activity='10'/></ServiceOrder></ccsocservcactv>");
    EXPECT_EQ(forms::activityOptions(store, "A1"),
              "<OPTION value=10>A1 - 10</OPTION><OPTION value=20>A1 - 20</OPTION>"
              "<OPTION value=10>A1 - 10</OPTION>");
}

}  // namespace
}  // namespace tandril::test
