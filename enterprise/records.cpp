#include "enterprise/records.h"

#include <array>

namespace tandril::enterprise {
namespace {

struct KindNames {
    Kind kind;
    const char* section;
    const char* costType;
};

constexpr std::array<KindNames, 5> kinds{{{Kind::Order, "ccsocservcordr", ""},
                                          {Kind::Activity, "ccsocservcactv", ""},
                                          {Kind::Material, "ccsocservcmatl", "Material"},
                                          {Kind::Labour, "ccsocservclabr", "Labor"},
                                          {Kind::Other, "ccsocservcothr", "Other"}}};

}  // namespace

const char* sectionOf(Kind kind) {
    return kinds.at(static_cast<std::size_t>(kind)).section;
}

const char* costTypeOf(Kind kind) {
    return kinds.at(static_cast<std::size_t>(kind)).costType;
}

bool isProvisional(std::string_view number) {
    return number.starts_with('_');
}

}  // namespace tandril::enterprise
