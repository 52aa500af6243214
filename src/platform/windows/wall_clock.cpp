#include "platform/windows/wall_clock.h"

#include <array>

#include "platform/windows/wide.h"

namespace tandril::platform {

std::string formatGeneralDate(const SYSTEMTIME& time, const std::wstring& locale) {
    // No name at all, unlike an empty one, stands for the user's own settings.
    const wchar_t* name = locale.empty() ? LOCALE_NAME_USER_DEFAULT : locale.c_str();
    std::array<wchar_t, 128> date{};
    std::array<wchar_t, 128> clock{};
    ::GetDateFormatEx(name, DATE_SHORTDATE, &time, nullptr, date.data(),
                      static_cast<int>(date.size()), nullptr);
    ::GetTimeFormatEx(name, 0, &time, nullptr, clock.data(), static_cast<int>(clock.size()));
    return toUtf8(date.data()) + " " + toUtf8(clock.data());
}

std::string WallClock::generalDate() const {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    return formatGeneralDate(now, locale_);
}

}  // namespace tandril::platform
