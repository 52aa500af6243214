#include "store/sections.h"

#include <algorithm>
#include <cstddef>

namespace tandril::store {
namespace {

template <class Matches>
const CostType* findCostType(Matches matches) {
    const auto* found = std::find_if(costTypes.begin(), costTypes.end(), matches);
    return found == costTypes.end() ? nullptr : found;
}

}  // namespace

const char* sectionName(Section section) {
    return sectionNames[static_cast<std::size_t>(section)].data();
}

std::optional<Section> sectionNamed(std::string_view name) {
    for (const Section section : allSections) {
        if (name == sectionName(section)) {
            return section;
        }
    }
    return std::nullopt;
}

const CostType* costTypeWithWord(std::string_view word) {
    return findCostType([&](const CostType& type) { return type.word == word; });
}

const CostType* costTypeWithDigit(std::string_view digit) {
    return findCostType([&](const CostType& type) { return type.digit == digit; });
}

const CostType* costTypeOf(Section section) {
    return findCostType([&](const CostType& type) { return type.section == section; });
}

}  // namespace tandril::store
