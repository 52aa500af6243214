#pragma once

#include <string>

#include "platform/clock.h"

namespace tandril::test {

// A clock that stands still until a test sets it.
class FixedClock : public platform::Clock {
  public:
    std::string generalDate() const override { return now; }

    std::string now = "15/11/2026 11:59:39";
};

}  // namespace tandril::test
