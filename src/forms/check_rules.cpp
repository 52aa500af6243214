#include "forms/check_rules.h"

#include <algorithm>
#include <optional>
#include <span>

#include "forms/fields.h"
#include "forms/stamp_conversion.h"

namespace tandril::forms {
namespace {

using store::Section;
using Names = std::span<const std::string_view>;
using Judge = std::string_view (*)(const CheckedField& field, MasterDataLookUp& masterData);

// Message codes of failures, and what stands for none.
constexpr std::string_view good;
constexpr std::string_view mustBeFilled = "SLBEU0327";
constexpr std::string_view noValidDate = "SLBEU0328";
constexpr std::string_view onlyWhenInterrupted = "SLBEU0329";
constexpr std::string_view mustBeEmpty = "SLBEU0330";
constexpr std::string_view notInMasterData = "SLBEU0373";

// Whether the order was interrupted, as its flag says.
constexpr std::string_view wasInterrupted = "1";
constexpr std::string_view wasNotInterrupted = "2";

bool isOpen(const CheckedField& field) {
    return field.status == store::status::open;
}

std::string_view filled(const CheckedField& field, MasterDataLookUp&) {
    return field.value.empty() ? mustBeFilled : good;
}

std::string_view filledNumber(const CheckedField& field, MasterDataLookUp& masterData) {
    return field.value == fields::noNumber ? mustBeFilled : filled(field, masterData);
}

// An empty one is no date either.
std::string_view validDate(const CheckedField& field, MasterDataLookUp&) {
    return isValidStamp(field.value) ? good : noValidDate;
}

std::string_view validDateIfFilled(const CheckedField& field, MasterDataLookUp& masterData) {
    return field.value.empty() ? good : validDate(field, masterData);
}

std::string_view requiredDate(const CheckedField& field, MasterDataLookUp& masterData) {
    return field.value.empty() ? mustBeFilled : validDate(field, masterData);
}

std::string_view dateOfOpenOrder(const CheckedField& field, MasterDataLookUp& masterData) {
    return isOpen(field) ? requiredDate(field, masterData) : validDateIfFilled(field, masterData);
}

std::string_view knownValue(const CheckedField& field, MasterDataLookUp& masterData) {
    const bool isKnown =
        !field.isLookedUp || field.value.empty() || masterData.hasValue(field.name, field.value);
    return isKnown ? good : notInMasterData;
}

std::string_view knownValueWhileOpen(const CheckedField& field, MasterDataLookUp& masterData) {
    return isOpen(field) ? knownValue(field, masterData) : good;
}

std::string_view knownPriority(const CheckedField& field, MasterDataLookUp& masterData) {
    return field.value == fields::noNumber ? good : knownValue(field, masterData);
}

std::string_view knownObject(const CheckedField& field, MasterDataLookUp& masterData) {
    const bool isKnown = !field.isLookedUp || field.value.empty() ||
                         masterData.hasObject(field.configuration, field.value);
    return isKnown ? good : notInMasterData;
}

std::string_view knownObjectNumber(const CheckedField& field, MasterDataLookUp& masterData) {
    const bool isKnown = !field.isLookedUp || field.value.empty() ||
                         masterData.hasObjectNumber(field.configuration, field.value);
    return isKnown ? good : notInMasterData;
}

std::string_view reasonOfInterruption(const CheckedField& field, MasterDataLookUp& masterData) {
    if (field.value.empty()) {
        return field.interrupted == wasInterrupted ? mustBeFilled : good;
    }
    if (field.interrupted == wasNotInterrupted) {
        return mustBeEmpty;
    }
    if (field.interrupted != wasInterrupted && isOpen(field)) {
        return onlyWhenInterrupted;
    }
    return knownValue(field, masterData);
}

constexpr std::string_view orderDates[] = {fields::orderDate};
constexpr std::string_view otherOrderDates[] = {fields::plannedStartTime, fields::plannedFinishTime,
                                                fields::startDate, fields::executionStartTime,
                                                fields::executionFinishTime};
constexpr std::string_view plannedTimes[] = {fields::plannedStartTime, fields::plannedFinishTime};
constexpr std::string_view executionTimes[] = {fields::executionStartTime,
                                               fields::executionFinishTime};
constexpr std::string_view startDates[] = {fields::startDate};
constexpr std::string_view otherLabourDates[] = {
    fields::plannedStartTime, fields::plannedFinishTime, fields::orderDate,
    fields::executionStartTime, fields::executionFinishTime};
constexpr std::string_view endDates[] = {fields::endDate};
constexpr std::string_view descriptions[] = {fields::description, fields::activityDescription};
constexpr std::string_view reasons[] = {fields::interruptionReason};
constexpr std::string_view objects[] = {fields::object};
constexpr std::string_view objectNumbers[] = {fields::objectNumber};
constexpr std::string_view priorities[] = {fields::problemPriority};
constexpr std::string_view codes[] = {fields::problem,
                                      fields::solution,
                                      fields::referenceActivity,
                                      fields::interruptionReason,
                                      fields::unit,
                                      fields::task,
                                      fields::hourlyLaborType,
                                      fields::serviceItem,
                                      fields::salesQuantityUnit};
constexpr std::string_view codesWhileOpen[] = {fields::configuration, fields::costComponent,
                                               fields::actualWarehouse};

// Which rule a field is under: the first row that names its section, or none, and the field. Fields
// that no row names are not judged.
struct Rule {
    std::optional<Section> section;
    Names fields;
    Judge judge;
};

constexpr Rule rules[] = {
    {Section::Orders, orderDates, dateOfOpenOrder},
    {Section::Orders, otherOrderDates, validDateIfFilled},
    {Section::Activities, plannedTimes, requiredDate},
    {Section::Activities, executionTimes, validDateIfFilled},
    {Section::Labour, startDates, requiredDate},
    {Section::Labour, otherLabourDates, validDate},
    {Section::Orders, reasons, reasonOfInterruption},
    {std::nullopt, endDates, filledNumber},
    {std::nullopt, descriptions, filled},
    {std::nullopt, objects, knownObject},
    {std::nullopt, objectNumbers, knownObjectNumber},
    {std::nullopt, priorities, knownPriority},
    {std::nullopt, codes, knownValue},
    {std::nullopt, codesWhileOpen, knownValueWhileOpen},
};

bool appliesTo(const Rule& rule, const CheckedField& field) {
    return (!rule.section || *rule.section == field.section) &&
           std::find(rule.fields.begin(), rule.fields.end(), field.name) != rule.fields.end();
}

}  // namespace

std::string_view failureOf(const CheckedField& field, MasterDataLookUp& masterData) {
    for (const Rule& rule : rules) {
        if (appliesTo(rule, field)) {
            return rule.judge(field, masterData);
        }
    }
    return good;
}

}  // namespace tandril::forms
