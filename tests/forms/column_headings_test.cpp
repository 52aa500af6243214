#include "forms/column_headings.h"

#include <gtest/gtest.h>

#include "support/documents.h"

namespace tandril::test {
namespace {

using forms::registrationHeadings;

const std::string opening = "<COL WIDTH=120> <COL WIDTH=150><COL WIDTH=150><COL WIDTH=150><tr>";
const std::string closing = "<td class=tableheader align=center nowrap>Registration Date</td></tr>";

TEST(RegistrationHeadings, ListColumnsAreShownButTheKeysOfOrderAndActivity) {
    const mapper::FieldMapper mapper = mapperOf(
        "<ccsocservclabr><ServiceOrder LABEL='O' UINTERFACE='1'/><Activity LABEL='A' "
        "UINTERFACE='3'/><LineNumber LABEL='Line' UINTERFACE='1'/><Hours LABEL='Hours' "
        "UINTERFACE='3'/><Task LABEL='Task' UINTERFACE='2'/><Text LABEL='Text'/>"
        "</ccsocservclabr>");
    const mapper::ColumnHeader header = registrationHeadings(mapper, "ccsocservclabr");
    EXPECT_EQ(header.html, opening +
                               "<td class=tableheader align=center nowrap>Line</td>"
                               "<td class=tableheader align=center nowrap>Hours</td>" +
                               closing);
    EXPECT_EQ(header.columns, 2);
}

TEST(RegistrationHeadings, DateOfRegistrationEndsTheRowAlsoWhenNoFieldQualifies) {
    const mapper::FieldMapper mapper =
        mapperOf("<ccsocservclabr><Task LABEL='Task' UINTERFACE='0'/></ccsocservclabr>");
    for (const std::string_view section : {"ccsocservclabr", "unknown", "", "a/b"}) {
        const mapper::ColumnHeader header = registrationHeadings(mapper, section);
        EXPECT_EQ(header.html, opening + closing) << section;
        EXPECT_EQ(header.columns, 0) << section;
    }
}

TEST(RegistrationHeadings, RepeatedFieldIsShownAsItStandsEachTime) {
    const mapper::FieldMapper mapper = mapperOf(
        "<s><Hours LABEL='First' UINTERFACE='1'/><Hours LABEL='Second' UINTERFACE='3'/></s>");
    EXPECT_EQ(registrationHeadings(mapper, "s").html,
              opening +
                  "<td class=tableheader align=center nowrap>First</td>"
                  "<td class=tableheader align=center nowrap>Second</td>" +
                  closing);
}

}  // namespace
}  // namespace tandril::test
