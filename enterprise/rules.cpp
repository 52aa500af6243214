#include "enterprise/rules.h"

#include <string>

#include "enterprise/numbers.h"

namespace tandril::enterprise {
namespace {

using Node = pugi::xml_node;
using Reason = Refusal::Reason;

constexpr double hoursOfADay = 24;
constexpr double approvalLimit = 5000;

// Stamps compare as text, because they go from the year down to the second.
std::optional<Refusal> checkPeriod(Node record, const char* start, const char* finish) {
    const std::string from = record.child_value(start);
    const std::string to = record.child_value(finish);
    if (from.empty() || to.empty() || from <= to) return std::nullopt;
    return Refusal{Reason::FinishBeforeStart, ""};
}

std::optional<Refusal> checkAmount(Node record) {
    const std::string text = record.child_value("Amount");
    if (text.empty()) return std::nullopt;
    const auto amount = parseNumber(text);
    if (!amount || *amount < 0) return Refusal{Reason::AmountNotANumber, text};
    if (*amount > approvalLimit) return Refusal{Reason::AmountNeedsApproval, text};
    return std::nullopt;
}

}  // namespace

std::optional<Refusal> Rules::check(Kind kind, Node record, Node known) const {
    switch (kind) {
        case Kind::Order:
        case Kind::Activity:
            if (auto refusal = checkConfiguration(record)) return refusal;
            return checkPeriod(record, "ExecutionStartTime", "ExecutionFinishTime");
        case Kind::Material:
            return checkMaterial(record);
        case Kind::Labour:
            return checkLabour(record, known);
        case Kind::Other:
            return checkAmount(record);
    }
    return std::nullopt;
}

std::optional<Refusal> Rules::checkConfiguration(Node record) const {
    const std::string configuration = record.child_value("Configuration");
    if (configuration.empty() || tables_.has("CONFIGURATIONS", {{"CCFG", configuration}})) {
        return std::nullopt;
    }
    return Refusal{Reason::UnknownConfiguration, configuration};
}

std::optional<Refusal> Rules::checkMaterial(Node record) const {
    const std::string item = record.child_value("Item");
    if (!item.empty() && !tables_.has("SERVICEITEMS", {{"ITEM", item}})) {
        return Refusal{Reason::UnknownItem, item};
    }
    const std::string quantity = record.child_value("Quantity");
    if (!quantity.empty() && parseNumber(quantity).value_or(0) <= 0) {
        return Refusal{Reason::QuantityNotPositive, quantity};
    }
    return std::nullopt;
}

std::optional<Refusal> Rules::checkLabour(Node record, Node known) const {
    if (auto refusal = checkPeriod(record, "StartDate", "EndDate")) return refusal;
    const std::string text = record.child_value("Hours");
    if (text.empty()) return std::nullopt;
    const double hours = parseNumber(text).value_or(0);
    if (hours <= 0 || hours > hoursOfADay) return Refusal{Reason::HoursOutOfRange, text};
    const std::string day = std::string(record.child_value("StartDate")).substr(0, 8);
    const double sum = hours + book_.hoursOnDay(record.child_value("Employee"), day, known);
    if (sum > hoursOfADay) return Refusal{Reason::TooManyHoursOnADay, formatNumber(sum)};
    return std::nullopt;
}

}  // namespace tandril::enterprise
