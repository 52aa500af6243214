#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/temporary_home.h"
#include "system/working_day.h"

namespace tandril::test {

// What a home's files hold at a moment.
struct Moment {
    std::string store;
    std::string report;
    std::string registry;
    std::string upload;
    std::string removed;

    static Moment of(const TemporaryHome& home);
};

// A day that was made once from its beginning to its end, with what the files held before the first
// call and after each one.
struct RecordedDay {
    RecordedDay(std::uint32_t seed, int count);

    std::vector<DayCall> calls;
    std::vector<Moment> moments;  // one more than calls
};

// Makes `home` the place where a day begins.
void beginDay(const TemporaryHome& home);

// Makes the calls of a day on a component of its own.
void makeCalls(const TemporaryHome& home, const std::vector<DayCall>& calls);

}  // namespace tandril::test
