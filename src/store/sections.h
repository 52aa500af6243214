#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tandril::store {

// The sections of the order store, in their order in the document.
enum class Section { Orders, Activities, Material, Labour, Other, HourRegistrations };

inline constexpr std::array allSections{Section::Orders,   Section::Activities,
                                        Section::Material, Section::Labour,
                                        Section::Other,    Section::HourRegistrations};
inline constexpr std::array costSections{Section::Material, Section::Labour, Section::Other};

// The document element, and what an empty store holds.
inline constexpr const char* rootName = "harbrook";
inline constexpr std::string_view emptyStore =
    "<harbrook><ccsocservcordr/><ccsocservcactv/><ccsocservcmatl/><ccsocservclabr/>"
    "<ccsocservcothr/><ccsocservchra/></harbrook>";

// Elements and attributes of records. An order is a `record`; activities and cost lines, whatever
// they are named, are the children of `ServiceOrder` groups.
inline constexpr const char* orderElement = "record";
inline constexpr const char* groupElement = "ServiceOrder";
inline constexpr const char* orderKey = "ServiceOrder";  // of an order
inline constexpr const char* groupOrderKey = "ID";       // of a group: its order
inline constexpr const char* activityKey = "Activity";   // of an activity and of a cost-line group
inline constexpr const char* lineKey = "LineNumber";
inline constexpr const char* stateAttribute = "State";

// The names of the sections' elements; terminated by zeros.
inline constexpr std::array<std::string_view, allSections.size()> sectionNames{
    "ccsocservcordr", "ccsocservcactv", "ccsocservcmatl",
    "ccsocservclabr", "ccsocservcothr", "ccsocservchra"};
const char* sectionName(Section section);
std::optional<Section> sectionNamed(std::string_view name);

// The attribute that tells the members of a group of the section apart; terminated by a zero.
constexpr const char* memberKey(Section section) {
    return section == Section::Activities ? activityKey : lineKey;
}

// The kinds of cost lines, with the words that the page and the server use for them.
struct CostType {
    Section section;
    std::string_view word;       // in lists and in the upload report
    std::string_view pageWord;   // in deletions
    std::string_view digit;      // in the drop-down of cost types
    std::string_view kind;       // object kind, as `showdetails` takes it
    std::string_view listTitle;  // message code of the title of its list
};

inline constexpr std::array costTypes{
    CostType{Section::Material, "Material", "material", "1", "3", "SLBEU0297"},
    CostType{Section::Labour, "Labor", "labor", "2", "4", "SLBEU0298"},
    CostType{Section::Other, "Other", "other", "3", "5", "SLBEU0299"},
};

// The row of costTypes with that word or digit, or for that section; null when there is none.
const CostType* costTypeWithWord(std::string_view word);
const CostType* costTypeWithDigit(std::string_view digit);
const CostType* costTypeOf(Section section);

// Status codes: the text of the first child of orders and activities.
namespace status {
inline constexpr std::string_view open = "15";
inline constexpr std::string_view completed = "20";  // by the engineer
inline constexpr std::string_view closed = "35";     // by the server
}  // namespace status

// Records made on the workstation have provisional numbers.
inline bool isProvisional(std::string_view number) {
    return number.starts_with('_');
}

}  // namespace tandril::store
