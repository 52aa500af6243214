#include "forms/kinds.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "html/html.h"

namespace tandril::forms {
namespace {

using store::Section;
using Labels = std::span<const std::string_view>;

constexpr std::array<std::string_view, 3> lineKeyLabels{"SLBEU0000", "SLBEU0279", "SLBEU0042"};
constexpr std::array<std::string_view, 3> registrationKeyLabels{"SLBSE9170", "SLBSE9172",
                                                                "SLBEU0042"};
constexpr std::array<std::string_view, 3> newKeyLabels{"SLBEU0000", "SLBEU0041", "SLBEU0042"};

constexpr std::array<FormKind, 5> kinds{{
    {"1", "order", Level::Order, Section::Orders, "SLBEU0277", "SLBEU0286", "", "", Labels(),
     Labels(newKeyLabels).first(1)},
    {"2", "activity", Level::Activity, Section::Activities, "SLBEU0278", "SLBEU0287", "SLBEU0276",
     "", Labels(), Labels(newKeyLabels).first(2)},
    {"3", "material", Level::Line, Section::Material, "SLBEU0280", "SLBEU0270", "SLBEU0270",
     "SLBEU0273", lineKeyLabels, newKeyLabels},
    {"4", "labor", Level::Line, Section::Labour, "SLBEU0281", "SLBEU0271", "SLBEU0271", "SLBEU0274",
     lineKeyLabels, newKeyLabels},
    {"5", "other", Level::Line, Section::Other, "SLBEU0283", "SLBEU0272", "SLBEU0272", "SLBEU0275",
     lineKeyLabels, newKeyLabels},
}};
constexpr std::size_t firstLineKind = 2;

// The page opens a new one as a labour line.
constexpr FormKind registration{
    "4",         "hra",       Level::Line, Section::Labour,       "SLBEU0333",
    "SLBEU0334", "SLBSE9163", "",          registrationKeyLabels, Labels()};

}  // namespace

const FormKind* formKind(std::string_view number) {
    const auto* found = std::find_if(kinds.begin(), kinds.end(),
                                     [&](const FormKind& kind) { return kind.number == number; });
    return found == kinds.end() ? nullptr : found;
}

const FormKind& orderKind() {
    return kinds[0];
}

const FormKind& activityKind() {
    return kinds[1];
}

const FormKind& materialKind() {
    return kinds[firstLineKind];
}

std::span<const FormKind> costLineKinds() {
    return std::span(kinds).subspan(firstLineKind);
}

const FormKind& hourRegistrationKind() {
    return registration;
}

RecordKey keyAt(Level level, RecordKey key) {
    if (level == Level::Order) {
        key.activity.clear();
    }
    if (level != Level::Line) {
        key.line.clear();
    }
    return key;
}

std::vector<std::string_view> keyParts(Level level, const RecordKey& key) {
    switch (level) {
        case Level::Order:
            return {key.order};
        case Level::Activity:
            return {key.order, key.activity};
        case Level::Line:
            break;
    }
    return {key.order, key.activity, key.line};
}

std::string formName(const FormKind& kind, const RecordKey& key) {
    std::string name(kind.word);
    for (const std::string_view part : keyParts(kind.level, key)) {
        name += '_';
        name += part;
    }
    return name;
}

std::string formName(const FormKind& kind, std::string_view number) {
    return html::joined({kind.word, "_", number});
}

}  // namespace tandril::forms
