// A disk that is full at any save: the call ends in a fault, the files are whole, and the same call
// goes through once there is room.
#include <gtest/gtest.h>

#include <memory>

#include "component/workstation.h"
#include "system/kept_parts.h"
#include "system/working_day.h"

namespace tandril::test {
namespace {

constexpr int callsPerDay = 60;

// A day on a machine of fakes.
struct Day : Workstation {
    Day() {
        prepareDay(machine.files);
        client.Initialize();
    }

    struct Files {
        std::string store, report, upload, settings;
        bool operator==(const Files&) const = default;
    };
    Files files() const {
        return {machine.files.content(paths::store), machine.files.content(paths::report),
                machine.files.content(paths::upload), machine.registry.dump()};
    }
};

// A day whose calls before `index` went well and whose next one is to fail.
std::unique_ptr<Day> dayUpTo(const std::vector<DayCall>& calls, std::size_t index) {
    auto day = std::make_unique<Day>();
    for (std::size_t i = 0; i < index; ++i) {
        make(day->client, calls[i]);
    }
    return day;
}

// Makes a call whose `nth` save fails. Returns whether it has so many.
bool failsAt(const std::vector<DayCall>& calls, std::size_t index, int nth) {
    const auto day = dayUpTo(calls, index);
    const DayCall& call = calls[index];
    const Day::Files before = day->files();
    day->machine.faults.failOn(FileOperation::Replace, nth);
    try {
        make(day->client, call);
        return false;
    } catch (const Fault&) {
    }
    EXPECT_EQ(day->client.Get_Error(), "1");
    const Day::Files after = day->files();
    EXPECT_TRUE(isStore(after.store));
    EXPECT_EQ(after.report, before.report);
    // The store tells what has been sent, and the text what that was.
    EXPECT_TRUE(after.upload == before.upload || call.method == "CreateXMLStringForUpdate");
    if (after.store == before.store) {
        const auto undisturbed = dayUpTo(calls, index + 1);
        make(day->client, call);
        EXPECT_TRUE(day->files() == undisturbed->files());
    } else {
        EXPECT_TRUE(mayKeepPart(call.method));
    }
    return true;
}

TEST(FullDisk, AtAnySaveOfAnyCallLeavesWholeFiles) {
    std::vector<DayCall> calls;
    Day planned;
    WorkingDay day(planned.machine.files, 3);
    int failures = 0;
    for (int i = 0; i < callsPerDay; ++i) {
        calls.push_back(day.next());
        make(planned.client, calls.back());
        SCOPED_TRACE("call " + std::to_string(i) + ", " + calls.back().method);
        for (int nth = 1; failsAt(calls, calls.size() - 1, nth); ++nth) {
            ++failures;
        }
    }
    EXPECT_GT(failures, callsPerDay / 2);
}

}  // namespace
}  // namespace tandril::test
