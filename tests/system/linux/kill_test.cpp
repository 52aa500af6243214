// A process that changes records is killed at random moments: whatever the moment, the files are
// those of some moment between two calls.
#include <gmock/gmock.h>
#include <signal.h>

#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

#include "platform/linux/posix_file.h"
#include "store/order_store.h"
#include "support/child_process.h"
#include "system/linux/recorded_day.h"

#ifndef TANDRIL_KILLS
#define TANDRIL_KILLS 500
#endif

namespace tandril::test {
namespace {

using ::testing::Each;
using ::testing::Not;
using ::testing::StartsWith;
using Clock = std::chrono::steady_clock;

constexpr int callsPerDay = 60;

// The environment may ask for more.
int kills() {
    const char* const asked = std::getenv("TANDRIL_KILLS");
    return asked == nullptr ? TANDRIL_KILLS : std::atoi(asked);
}

std::uint32_t seed() {
    const char* const asked = std::getenv("TANDRIL_SEED");
    return asked == nullptr ? 1 : static_cast<std::uint32_t>(std::atoi(asked));
}

Clock::duration timeOfWholeDay(const RecordedDay& day) {
    const TemporaryHome home;
    beginDay(home);
    const auto start = Clock::now();
    waitFor(startInChild({}, [&] {
        makeCalls(home, day.calls);
        return 0;
    }));
    return Clock::now() - start;
}

// What a kill leaves beside the files goes when each of them is saved again.
void expectCleanAfterSaves(const TemporaryHome& home) {
    for (const std::string_view file :
         {"Vorn Tandril/Harbrook.xml", "Vorn Tandril/UploadReport.xml", "Vorn Tandril/Upload.xml",
          "Vorn Tandril/Removed.xml", "registry.reg"}) {
        const std::string path = home.pathOf(file);
        const std::string content = home.read(file);
        platform::replaceFile(path, path, content, platform::Durability::Relaxed);
    }
    EXPECT_THAT(home.names(), Each(Not(StartsWith(".tandril"))));
    EXPECT_THAT(home.names("Vorn Tandril"), Each(Not(StartsWith(".tandril"))));
}

// Kills a process in the middle of the day; returns what the files hold then.
Moment killedDay(const RecordedDay& day, Clock::duration after) {
    const TemporaryHome home;
    beginDay(home);
    const pid_t child = startInChild({}, [&] {
        makeCalls(home, day.calls);
        return 0;
    });
    std::this_thread::sleep_for(after);
    ::kill(child, SIGKILL);
    waitFor(child);
    const Moment found = Moment::of(home);
    expectCleanAfterSaves(home);
    return found;
}

// Whether `found` is the moment behind call `done`, or one while the call behind that was saving:
// copies and upload text first, then the store, right behind it the report, and last the settings.
bool isDuring(const Moment& found, const RecordedDay& day, std::size_t done) {
    const Moment& before = day.moments[done];
    if (done + 1 == day.moments.size()) {
        return found.store == before.store && found.report == before.report &&
               found.registry == before.registry;
    }
    const Moment& after = day.moments[done + 1];
    const auto isOneOf = [&](std::string Moment::*file) {
        return found.*file == before.*file || found.*file == after.*file;
    };
    if (!isOneOf(&Moment::store) || !isOneOf(&Moment::report) || !isOneOf(&Moment::registry) ||
        !isOneOf(&Moment::upload) || !isOneOf(&Moment::removed)) {
        return false;
    }
    const bool isStoreOld = found.store == before.store;
    const bool isReportOld = found.report == before.report;
    const bool isStoreNew = found.store == after.store;
    const bool isSafe = found.upload == after.upload && found.removed == after.removed;
    return (isReportOld || isStoreNew) && (isStoreOld || isSafe);
}

// How much longer a day takes than was thought, going by the moment behind call `done` at which a
// kill came: other programs on the machine may come and go while the test runs.
double correction(std::size_t done, std::size_t moments) {
    if (done == 0) {
        return 1.15;
    }
    return done + 1 == moments ? 0.87 : 1;
}

TEST(Kill, LeavesTheFilesOfSomeMomentOfTheDay) {
    const RecordedDay day(seed(), callsPerDay);
    std::chrono::duration<double> whole = timeOfWholeDay(day);
    std::mt19937_64 random(seed());
    std::uniform_real_distribution<double> part(0, 1);
    std::vector<int> seen(day.moments.size());
    for (int run = 0; run < kills(); ++run) {
        const Moment found =
            killedDay(day, std::chrono::duration_cast<Clock::duration>(whole * part(random)));
        std::size_t done = 0;
        while (done < day.moments.size() && !isDuring(found, day, done)) {
            ++done;
        }
        ASSERT_LT(done, day.moments.size())
            << "run " << run << ": these files were never together\n"
            << found.store << '\n'
            << found.report << '\n'
            << found.registry.size() << " bytes of settings";
        ASSERT_TRUE(store::OrderStore::from(xml::Document::decode(found.store)));
        ++seen[done];
        whole *= correction(done, day.moments.size());
    }
    // A kill that always came too early or too late would prove nothing.
    EXPECT_LT(seen.front(), kills() / 2);
    EXPECT_LT(seen.back(), kills() / 2);
}

}  // namespace
}  // namespace tandril::test
