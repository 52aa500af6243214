// The main calls, each beside its floor: what bare pugixml and durable writes of the same files
// cost. bench/run runs it for stores of several sizes and makes a table.
//
//   bench-calls --prepare FOLDER BYTES    makes the documents for a store of about that size
//   bench-calls --parse FILE              parses a file by bare pugixml and ends
//   bench-calls FOLDER [OPTION...]        times the calls on them; options of Google Benchmark

#include <benchmark/benchmark.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "bench/documents.h"
#include "bench/floor.h"
#include "bench/heap.h"
#include "bench/workplace.h"
#include "component/paths.h"

namespace {

using namespace tandril;

// The number of an order in the middle, which forms and lines are asked for.
constexpr const char* someOrder = "some-order.txt";

std::string pathIn(const std::string& folder, const char* name) {
    return folder + "/" + name;
}

void prepare(const std::string& folder, const std::string& bytes) {
    const bench::Documents documents(bench::readWhole(TANDRIL_SAMPLES "/orders.xml"));
    const std::size_t orders = documents.ordersFor(std::stoull(bytes));
    const auto write = [&](const char* name, const std::string& text) {
        bench::writeWhole(pathIn(folder, name), text);
    };
    std::filesystem::create_directories(folder);
    write("store.xml", documents.store({0, orders}));
    write("first.xml", documents.download({0, orders}));
    // A tenth more orders, and the last tenth once again.
    write("more.xml", documents.download({orders - orders / 10, orders / 10 * 2 + 1}));
    write("edit.xml", documents.edits({orders / 2, 1}));
    write("report.xml", documents.report({0, orders / 5 + 1}));
    write(someOrder, documents.number(orders / 2 / 25 * 25));
}

// What a call is given: the document of its case, and an order of the store.
struct Given {
    std::string document;
    std::string order;
};

struct Case {
    const char* name;
    const char* document;  // of those that --prepare made; nullptr: none
    bool hasStore;         // there is a store when the call begins
    bool readsMapper;
    std::function<std::string(Client20&, const Given&)> call;
};

const Case cases[] = {
    {"MyActivities", nullptr, true, true,
     [](Client20& client, const Given&) { return client.MyActivities(""); }},
    {"ListOrders", nullptr, true, true,
     [](Client20& client, const Given&) { return client.ListOrders(); }},
    {"ListCostLines", nullptr, true, true,
     [](Client20& client, const Given& given) {
         return client.ListCostLines("Material", given.order, "10");
     }},
    {"GetDetails", nullptr, true, true,
     [](Client20& client, const Given& given) {
         return client.GetDetails("1", given.order, "", "", "", 2);
     }},
    {"CreateForm", nullptr, true, true,
     [](Client20& client, const Given& given) {
         return client.CreateForm("3", given.order, "10");
     }},
    {"DownloadXml (first)", "first.xml", false, false,
     [](Client20& client, const Given& given) { return client.DownloadXml(given.document); }},
    {"DownloadXml (merge)", "more.xml", true, true,
     [](Client20& client, const Given& given) { return client.DownloadXml(given.document); }},
    {"updatexml", "edit.xml", true, true,
     [](Client20& client, const Given& given) { return client.updatexml(given.document); }},
    {"CreateXMLStringForUpdate", nullptr, true, false,
     [](Client20& client, const Given&) { return client.CreateXMLStringForUpdate(); }},
    {"DownloadErrors", "report.xml", true, false,
     [](Client20& client, const Given& given) { return client.DownloadErrors(given.document); }},
};

// A case on its workplace.
class Run {
  public:
    Run(const Case& what, const std::string& folder)
        : case_(what), store_(pathIn(folder, "store.xml")) {
        given_.order = bench::readWhole(pathIn(folder, someOrder));
        if (what.document != nullptr) {
            given_.document = bench::readWhole(pathIn(folder, what.document));
        }
    }

    // Puts everything back as it is before the call: the files, and the store of the call before,
    // which a new process does not have to give up first.
    void reset() {
        case_.hasStore ? workplace_.putStore(store_) : workplace_.removeStore();
        workplace_.module().lastStore.reset();
    }

    std::string call() { return case_.call(workplace_.client(), given_); }

    // The floor of the call, from what the call leaves behind.
    bench::Floor floor() {
        reset();
        const std::string returned = call();
        if (const std::string error = workplace_.client().Get_Error(); error.size() > 1) {
            throw std::runtime_error(std::string(case_.name) + ": " + error);
        }
        bench::Floor floor;
        if (case_.hasStore) {
            floor.read.push_back(workplace_.pathOf(paths::store));
        }
        if (case_.readsMapper) {
            floor.read.push_back(workplace_.pathOf(paths::fieldMapper));
        }
        if (case_.document != nullptr) {
            floor.given.push_back(&given_.document);
        }
        if (!case_.hasStore || bench::readWhole(floor.read.front()) != bench::readWhole(store_)) {
            floor.changed = paths::store;
        }
        for (const std::string_view path : {paths::upload, paths::report, paths::removed}) {
            add(floor.replaced, std::string(path), workplace_.pathOf(path));
        }
        add(floor.appended, std::string(paths::log), workplace_.pathOf(paths::log));
        if (!returned.empty()) {
            floor.written.push_back({workplace_.pathOf("C:\\returned"), returned.size()});
        }
        reset();
        return floor;
    }

    void runFloor(const bench::Floor& floor) { floor.run(workplace_.files()); }

    // More than the call or its floor needs.
    std::size_t touchedBytes() const {
        constexpr std::size_t timesTheDocuments = 10;
        return timesTheDocuments * (std::filesystem::file_size(store_) + given_.document.size());
    }

  private:
    static void add(std::vector<bench::Floor::Filled>& to, std::string path,
                    const std::string& real) {
        if (std::filesystem::exists(real) && std::filesystem::file_size(real) != 0) {
            to.push_back({std::move(path), std::filesystem::file_size(real)});
        }
    }

    const Case& case_;
    std::string store_;
    Given given_;
    bench::Workplace workplace_;
};

template <class Body>
void measure(benchmark::State& state, Run& run, Body body) {
    double peak = 0;
    for (auto iteration : state) {
        state.PauseTiming();
        run.reset();
        bench::startWithEmptyHeap(run.touchedBytes());
        bench::forgetPeak();
        state.ResumeTiming();
        body();
        state.PauseTiming();
        peak = std::max(peak, bench::peakMegabytes());
        state.ResumeTiming();
    }
    state.counters["peak MB"] = peak;
}

void timeCall(benchmark::State& state, const Case& what, const std::string& folder) {
    Run run(what, folder);
    measure(state, run, [&] { benchmark::DoNotOptimize(run.call()); });
}

void timeFloor(benchmark::State& state, const Case& what, const std::string& folder) {
    Run run(what, folder);
    const bench::Floor floor = run.floor();
    measure(state, run, [&] { run.runFloor(floor); });
}

void add(const Case& what, const std::string& folder) {
    const std::string name = what.name;
    benchmark::RegisterBenchmark((name + "/call").c_str(), [&what,
                                                            folder](benchmark::State& state) {
        timeCall(state, what, folder);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/floor").c_str(), [&what,
                                                             folder](benchmark::State& state) {
        timeFloor(state, what, folder);
    })->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int count, char** arguments) {
    try {
        if (count == 4 && std::string(arguments[1]) == "--prepare") {
            prepare(arguments[2], arguments[3]);
            return 0;
        }
        if (count == 3 && std::string(arguments[1]) == "--parse") {
            bench::parse(arguments[2]);
            return 0;
        }
        benchmark::Initialize(&count, arguments);
        if (count != 2) {
            std::cerr << "usage: bench-calls [--prepare | --parse] FOLDER [BYTES]\n";
            return 2;
        }
        for (const Case& what : cases) {
            add(what, arguments[1]);
        }
        return benchmark::RunSpecifiedBenchmarks() == 0 ? 1 : 0;
    } catch (const std::exception& fault) {
        std::cerr << "bench-calls: " << fault.what() << '\n';
        return 1;
    }
}
