// What a record costs in stores of 100 to 100,000 orders, for the calls that work through all of
// them. bench/growth runs it and judges the growth.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "bench/documents.h"
#include "bench/heap.h"
#include "bench/workplace.h"

namespace {

using namespace tandril;
using bench::require;

const bench::Documents& documents() {
    static const bench::Documents made(bench::readWhole(TANDRIL_SAMPLES "/orders.xml"));
    return made;
}

// Processor time in microseconds, of the program itself and of the system on its behalf.
struct Processor {
    double program = 0;
    double system = 0;
};

double microseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
}

Processor processorTime() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return {microseconds(usage.ru_utime), microseconds(usage.ru_stime)};
}

// Much more than a call on one order needs.
constexpr std::size_t touchedBytesPerOrder = 30'000;

std::size_t ordersOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

// Times `call` on a store of as many orders as the run says. Each time has a component and files of
// its own, which `prepare` fills, and begins with an empty heap.
template <class Prepare, class Call>
void perRecord(benchmark::State& state, Prepare prepare, Call call) {
    Processor spent;
    for (auto iteration : state) {
        state.PauseTiming();
        {
            bench::Workplace workplace;
            prepare(workplace);
            bench::startWithEmptyHeap(ordersOf(state) * touchedBytesPerOrder);
            const Processor before = processorTime();
            state.ResumeTiming();
            call(workplace.client());
            state.PauseTiming();
            const Processor after = processorTime();
            spent.program += after.program - before.program;
            spent.system += after.system - before.system;
        }
        state.ResumeTiming();
    }
    const auto records = static_cast<double>(state.iterations() * state.range(0));
    state.counters["program us"] = spent.program / records;
    state.counters["system us"] = spent.system / records;
}

// The same for a call that finds a store.
template <class Call>
void perStoredRecord(benchmark::State& state, Call call) {
    const bench::TemporaryFile store(documents().store({0, ordersOf(state)}));
    perRecord(
        state, [&](bench::Workplace& workplace) { workplace.putStore(store.path()); }, call);
}

void firstDownload(benchmark::State& state) {
    const std::string xml = documents().download({0, ordersOf(state)});
    perRecord(
        state, [](bench::Workplace& workplace) { workplace.removeStore(); },
        [&](Client20& client) {
            require(!client.DownloadXml(xml).empty(), "nothing was downloaded");
        });
}

// Half of what comes is known, half of it is new.
void mergingDownload(benchmark::State& state) {
    const std::size_t orders = ordersOf(state);
    const std::string xml = documents().download({orders / 2, orders});
    perStoredRecord(state, [&](Client20& client) {
        require(client.DownloadXml(xml) == "New Data has been downloaded.", "nothing was merged");
    });
}

void upload(benchmark::State& state) {
    perStoredRecord(state, [](Client20& client) {
        require(!client.CreateXMLStringForUpdate().empty(), "nothing to upload");
    });
}

void report(benchmark::State& state) {
    const std::string xml = documents().report({0, ordersOf(state)});
    perStoredRecord(state, [&](Client20& client) {
        require(client.DownloadErrors(xml).empty(), "the report was refused");
    });
}

void edit(benchmark::State& state) {
    const std::string xml = documents().edits({0, ordersOf(state)});
    perStoredRecord(state, [&](Client20& client) {
        require(client.updatexml(xml).empty(), "the edit was refused");
    });
}

constexpr std::int64_t smallest = 100;
constexpr std::int64_t largest = 100'000;

void sizes(benchmark::internal::Benchmark* run) {
    run->RangeMultiplier(10)->Range(smallest, largest)->Unit(benchmark::kMillisecond);
}

BENCHMARK(firstDownload)->Name("DownloadXml (first)")->Apply(sizes);
BENCHMARK(mergingDownload)->Name("DownloadXml (merge)")->Apply(sizes);
BENCHMARK(upload)->Name("CreateXMLStringForUpdate")->Apply(sizes);
BENCHMARK(report)->Name("DownloadErrors")->Apply(sizes);
BENCHMARK(edit)->Name("updatexml")->Apply(sizes);

}  // namespace

BENCHMARK_MAIN();
