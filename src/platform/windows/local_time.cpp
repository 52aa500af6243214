#include "platform/local_time.h"

namespace tandril::platform {

std::tm localTime(std::time_t time) {
    std::tm parts{};
    ::localtime_s(&parts, &time);
    return parts;
}

}  // namespace tandril::platform
