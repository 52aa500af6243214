// A disk that is full at any save: the call ends in a fault, the files are whole, and the same call
// goes through once there is room.
#include <gtest/gtest.h>

#include <memory>

#include "component/workstation.h"
#include "store/order_store.h"
#include "support/child_process.h"
#include "system/recorded_day.h"

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
        std::string store, report;
        bool operator==(const Files&) const = default;
    };
    Files files() const {
        return {machine.files.content(paths::store), machine.files.content(paths::report)};
    }
};

bool isStore(const std::string& bytes) {
    return store::OrderStore::from(xml::Document::decode(bytes)).has_value();
}

// Whether the call keeps what it did before the fault: orders are completed ahead of an upload, and
// a download is merged ahead of the purge.
bool mayKeepPart(const std::string& method) {
    return method == "CreateXMLStringForUpdate" || method == "DownloadXml";
}

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

// In a process of its own: makes the day on files that cannot grow past the limit. Returns the
// number of calls that changed more than they may before they failed, or 100 when none failed.
int makeDayWithLimit(const TemporaryHome& home, const RecordedDay& day) {
    int bad = 0;
    int failed = 0;
    for (const DayCall& call : day.calls) {
        const Moment before = Moment::of(home);
        try {
            makeCalls(home, {call});
        } catch (const Fault&) {
            ++failed;
            const Moment after = Moment::of(home);
            const bool isKept = after.store == before.store || mayKeepPart(call.method);
            bad += isKept && isStore(after.store) && after.report == before.report ? 0 : 1;
        }
    }
    return failed == 0 ? 100 : bad;
}

TEST(FullDisk, OfARealFileSystemLeavesWholeFiles) {
    const RecordedDay day(5, callsPerDay);
    std::size_t largest = 0;
    for (const Moment& moment : day.moments) {
        largest = std::max(largest, moment.store.size());
    }
    for (const std::size_t limit : {largest / 8, largest / 4, largest / 2, largest - 1}) {
        const TemporaryHome home;
        beginDay(home);
        const ChildEnd end =
            runInChild({static_cast<long>(limit)}, [&] { return makeDayWithLimit(home, day); });
        EXPECT_EQ(end.exitStatus, 0) << limit;
    }
}

}  // namespace
}  // namespace tandril::test
