#include "system/linux/recorded_day.h"

#include "component/module.h"
#include "platform/machine.h"

namespace tandril::test {
namespace {

// A component on the machine that a home stands for.
struct HomeClient {
    explicit HomeClient(const TemporaryHome& home)
        : machine(platform::openMachine(home.path())), module(machine->machine()), client(module) {}

    std::unique_ptr<platform::OwnedMachine> machine;
    Module module;
    Client20 client;
};

// The clock goes on between two days that are otherwise the same.
std::string withoutTimes(std::string text) {
    const std::string start = " Time=\"";
    for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start)) {
        text.erase(at, text.find('"', at + start.size()) + 1 - at);
    }
    return text;
}

}  // namespace

Moment Moment::of(const TemporaryHome& home) {
    return {home.read("Vorn Tandril/Harbrook.xml"), home.read("Vorn Tandril/UploadReport.xml"),
            home.read("registry.reg"), home.read("Vorn Tandril/Upload.xml"),
            withoutTimes(home.read("Vorn Tandril/Removed.xml"))};
}

RecordedDay::RecordedDay(std::uint32_t seed, int count) {
    const TemporaryHome home;
    beginDay(home);
    HomeClient work(home);
    WorkingDay day(work.machine->machine().files, seed);
    moments.push_back(Moment::of(home));
    for (; count > 0; --count) {
        calls.push_back(day.next());
        make(work.client, calls.back());
        moments.push_back(Moment::of(home));
    }
}

void beginDay(const TemporaryHome& home) {
    HomeClient work(home);
    prepareDay(work.machine->machine().files);
    work.client.Initialize();
}

void makeCalls(const TemporaryHome& home, const std::vector<DayCall>& calls) {
    HomeClient work(home);
    for (const DayCall& call : calls) {
        make(work.client, call);
    }
}

}  // namespace tandril::test
