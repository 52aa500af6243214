#pragma once

#include <windows.h>

#include <string>
#include <utility>

#include "platform/clock.h"

namespace tandril::platform {

// The time in the form that a locale ("" for what the user has set, "en-US") gives it: short date,
// a blank, long time.
std::string formatGeneralDate(const SYSTEMTIME& time, const std::wstring& locale);

// The local time, in the user's own form or in that of a locale.
class WallClock final : public Clock {
  public:
    explicit WallClock(std::wstring locale = L"") : locale_(std::move(locale)) {}

    std::string generalDate() const override;

  private:
    std::wstring locale_;
};

}  // namespace tandril::platform
