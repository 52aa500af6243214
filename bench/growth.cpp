// What a record costs in stores of 100 to 100,000 orders, for the calls that work through all of
// them. bench/growth runs it and judges the growth.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <stdexcept>
#include <string>

#include "bench/documents.h"
#include "bench/workplace.h"

namespace {

using namespace tandril;

const bench::Documents& documents() {
    static const bench::Documents made(bench::readWhole(TANDRIL_SAMPLES "/orders.xml"));
    return made;
}

void require(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

// Times `call` on a store of as many orders as the run says; `prepare` makes it anew before each
// time. Per-record times are what the counter inverts.
template <class Prepare, class Call>
void perRecord(benchmark::State& state, Prepare prepare, Call call) {
    for (auto iteration : state) {
        state.PauseTiming();
        prepare();
        state.ResumeTiming();
        call();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

std::size_t ordersOf(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

// A store of `orders` orders in a file to copy it from.
std::string storeFile(const bench::Workplace& workplace, std::size_t orders) {
    const std::string file = workplace.pathOf("C:\\store.xml");
    bench::writeWhole(file, documents().store({0, orders}));
    return file;
}

void firstDownload(benchmark::State& state) {
    bench::Workplace workplace;
    const std::string xml = documents().download({0, ordersOf(state)});
    perRecord(
        state, [&] { workplace.removeStore(); },
        [&] { require(!workplace.client().DownloadXml(xml).empty(), "nothing was downloaded"); });
}

// Half of what comes is known, half of it is new.
void mergingDownload(benchmark::State& state) {
    bench::Workplace workplace;
    const std::size_t orders = ordersOf(state);
    const std::string store = storeFile(workplace, orders);
    const std::string xml = documents().download({orders / 2, orders});
    perRecord(
        state, [&] { workplace.putStore(store); },
        [&] {
            require(workplace.client().DownloadXml(xml) == "New Data has been downloaded.",
                    "nothing was merged");
        });
}

void upload(benchmark::State& state) {
    bench::Workplace workplace;
    const std::string store = storeFile(workplace, ordersOf(state));
    perRecord(
        state, [&] { workplace.putStore(store); },
        [&] {
            require(!workplace.client().CreateXMLStringForUpdate().empty(), "nothing to upload");
        });
}

void report(benchmark::State& state) {
    bench::Workplace workplace;
    const std::size_t orders = ordersOf(state);
    const std::string store = storeFile(workplace, orders);
    const std::string xml = documents().report({0, orders});
    perRecord(
        state, [&] { workplace.putStore(store); },
        [&] { require(workplace.client().DownloadErrors(xml).empty(), "the report was refused"); });
}

void edit(benchmark::State& state) {
    bench::Workplace workplace;
    const std::size_t orders = ordersOf(state);
    const std::string store = storeFile(workplace, orders);
    const std::string xml = documents().edits({0, orders});
    perRecord(
        state, [&] { workplace.putStore(store); },
        [&] { require(workplace.client().updatexml(xml).empty(), "the edit was refused"); });
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
