#pragma once

#include <ctime>

namespace tandril::platform {

// The time as the clocks of this place show it. Safe for concurrent use.
std::tm localTime(std::time_t time);

}  // namespace tandril::platform
