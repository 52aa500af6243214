#pragma once

#include <ctime>
#include <string>

#include "platform/clock.h"

namespace tandril::platform {

// The machine's clock. Its general date format is fixed, whatever the locale: day/month/year and
// 24-hour time, "15/11/2026 11:59:39".
class WallClock final : public Clock {
  public:
    std::string generalDate() const override;
};

// The broken-down time in that format.
std::string formatGeneralDate(const std::tm& time);

}  // namespace tandril::platform
