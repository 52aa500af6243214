#pragma once

#include <string>

#include "enterprise/language.h"

namespace tandril::enterprise {

// Why the office does not take a record.
struct Refusal {
    enum class Reason {
        UnknownOrder,
        UnknownActivity,
        ClosedOrder,
        UnknownConfiguration,
        FinishBeforeStart,
        HoursOutOfRange,
        TooManyHoursOnADay,
        UnknownItem,
        QuantityNotPositive,
        AmountNotANumber,
        AmountNeedsApproval,
    };

    Reason reason;
    std::string detail;  // the offending value, "" where the reason says it all
};

// The reason as a sentence for the engineer.
std::string describe(const Refusal& refusal, Language language);

}  // namespace tandril::enterprise
