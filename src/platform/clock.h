#pragma once

#include <string>

namespace tandril::platform {

// The clock on the wall.
class Clock {
  public:
    virtual ~Clock() = default;

    // The local date and time in the system's general date format: short date, a blank, long time.
    // Always one line, UTF-8.
    virtual std::string generalDate() const = 0;
};

}  // namespace tandril::platform
