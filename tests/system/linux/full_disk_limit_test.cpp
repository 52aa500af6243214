// A disk that is full at any byte of any save, which a limit on the size of files stands for: the
// files of the call that fails are whole.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "platform/fault.h"
#include "support/child_process.h"
#include "system/kept_parts.h"
#include "system/linux/recorded_day.h"

#ifndef TANDRIL_LIMIT_STEP
#define TANDRIL_LIMIT_STEP 251
#endif

namespace tandril::test {
namespace {

constexpr int callsPerDay = 60;

// Of every so many byte limits one is tried; the environment may ask for each.
std::size_t limitStep() {
    const char* const asked = std::getenv("TANDRIL_LIMIT_STEP");
    return asked == nullptr ? TANDRIL_LIMIT_STEP : static_cast<std::size_t>(std::atoi(asked));
}

// From here on no file of this process grows past the limit; RLIM_INFINITY takes it back.
void limitFiles(rlim_t bytes) {
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

// A home whose files are those of one moment of a day, and that can be brought back there.
struct HomeAt {
    explicit HomeAt(const Moment& before) : moment(before) { restore(); }

    void restore() const {
        const auto put = [this](const char* name, const std::string& bytes) {
            std::filesystem::remove(home.pathOf(name));
            if (bytes != "(no file)") home.write(name, bytes);
        };
        put("Vorn Tandril/FieldMapper.xml", "<m/>");
        put("Vorn Tandril/Harbrook.xml", moment.store);
        put("Vorn Tandril/UploadReport.xml", moment.report);
        put("Vorn Tandril/Upload.xml", moment.upload);
        put("Vorn Tandril/Removed.xml", moment.removed);
        put("Vorn Tandril/log.txt", "before\r\n");
        put("registry.reg", moment.registry);
    }
    std::string log() const { return home.read("Vorn Tandril/log.txt"); }

    TemporaryHome home;
    const Moment& moment;
};

// The call that failed has left "1" there.
std::string withoutError(std::string registry) {
    const std::size_t at = registry.find("\"Error\"=");
    return at == std::string::npos ? registry : registry.erase(at, registry.find('\n', at) - at);
}

bool hasLeftovers(const TemporaryHome& home) {
    const auto isLeft = [](const std::string& name) { return name.starts_with(".tandril"); };
    const auto names = home.names();
    const auto more = home.names("Vorn Tandril");
    return std::any_of(names.begin(), names.end(), isLeft) ||
           std::any_of(more.begin(), more.end(), isLeft);
}

// What is wrong with the files that a call left which found the disk full; "" when nothing is. Each
// is the old one or the new one, and none is ahead of what has to be safe before it.
std::string flaw(const HomeAt& at, const Moment& after, const std::string& method) {
    const Moment& before = at.moment;
    const Moment now = Moment::of(at.home);
    const bool isPart = mayKeepPart(method);
    const bool isStoreOld = now.store == before.store;
    const bool isSafe = now.upload == after.upload && now.removed == after.removed;
    if (!isStore(now.store) || (!isPart && !isStoreOld && now.store != after.store)) return "store";
    if (now.report != before.report && now.report != after.report) return "report";
    if (now.report != before.report && now.store != after.store) return "report before store";
    if (now.upload != before.upload && now.upload != after.upload) return "upload text";
    if (now.removed != before.removed && now.removed != after.removed) return "copies";
    if (!isPart && !isStoreOld && !isSafe) return "store before copies";
    if (withoutError(now.registry) != withoutError(before.registry) &&
        withoutError(now.registry) != withoutError(after.registry)) {
        return "settings";
    }
    const std::string log = at.log();
    if (!log.starts_with("before\r\n") || !log.ends_with("\r\n")) return "log";
    return hasLeftovers(at.home) ? "leftovers" : "";
}

// Makes the call while no file grows past the limit. Returns whether it went well.
bool goesWell(const HomeAt& at, const DayCall& call, std::size_t limit) {
    limitFiles(limit);
    bool isWell = true;
    try {
        makeCalls(at.home, {call});
    } catch (const Fault&) {
        isWell = false;
    }
    limitFiles(RLIM_INFINITY);
    return isWell;
}

// Makes the call with more and more room, until there is enough. Returns how often it failed, or -1
// when something was wrong then.
int failuresUntilThereIsRoom(const RecordedDay& day, std::size_t index) {
    const HomeAt at(day.moments[index]);
    const Moment& after = day.moments[index + 1];
    int failures = 0;
    for (std::size_t limit = 0; !goesWell(at, day.calls[index], limit); limit += limitStep()) {
        const std::string wrong = flaw(at, after, day.calls[index].method);
        if (!wrong.empty()) {
            std::cerr << wrong << " at " << limit << " bytes\n";
            return -1;
        }
        ++failures;
        at.restore();
    }
    const Moment now = Moment::of(at.home);
    const bool isDone = now.store == after.store && now.report == after.report &&
                        now.upload == after.upload && now.removed == after.removed &&
                        now.registry == after.registry;
    return isDone ? failures : -1;
}

TEST(FullDisk, AtAnyByteOfAnySaveLeavesWholeFiles) {
    const RecordedDay day(5, callsPerDay);
    for (std::size_t i = 0; i < day.calls.size(); ++i) {
        SCOPED_TRACE("call " + std::to_string(i) + ", " + day.calls[i].method);
        const ChildEnd end =
            runInChild({}, [&] { return failuresUntilThereIsRoom(day, i) < 0 ? 1 : 0; });
        ASSERT_EQ(end.exitStatus, 0);
    }
}

}  // namespace
}  // namespace tandril::test
