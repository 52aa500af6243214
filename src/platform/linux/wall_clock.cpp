#include "platform/linux/wall_clock.h"

namespace tandril::platform {

std::string formatGeneralDate(const std::tm& time) {
    char text[64];
    const std::size_t length = std::strftime(text, sizeof text, "%d/%m/%Y %H:%M:%S", &time);
    return std::string(text, length);
}

std::string WallClock::generalDate() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    return formatGeneralDate(local);
}

}  // namespace tandril::platform
