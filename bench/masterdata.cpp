// The lists of master data, each beside its floor: what the bare driver needs to read the same
// table and the system to write as many bytes. bench/calls prepares the home and makes a table.
//
//   bench-masterdata HOME DATABASE [OPTION...]    options of Google Benchmark

#include <benchmark/benchmark.h>

#include <array>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <string>

#include "bench/workplace.h"
#include "component/client20.h"
#include "component/module.h"
#include "platform/machine.h"
#include "platform/odbc/handles.h"
#include "platform/odbc/text_calls.h"

namespace {

using namespace tandril;
using bench::require;
using bench::TemporaryFile;
using bench::writeWhole;

using platform::odbc::Session;
using platform::odbc::Statement;

// As the component opens a database file.
constexpr const char* driver = "Driver=libsqlite3odbc.so;NoCreat=1;StepAPI=1;Database=";
// The table that bench/calls makes, and what each of its rows shows.
constexpr const char* query = "SELECT * FROM SERVICEITEMS";
constexpr const char* shown = "ITEM-";

// Reads every value of the table as text. Returns the number of rows.
std::size_t readAll(const Session& session) {
    const Statement statement(session.get());
    require(SQL_SUCCEEDED(platform::odbc::executeDirect(statement.get(), query)), query);
    SQLSMALLINT columns = 0;
    SQLNumResultCols(statement.get(), &columns);
    std::array<char, 1024> value;
    SQLRETURN fetched = SQL_SUCCESS;
    std::size_t rows = 0;
    for (; SQL_SUCCEEDED(fetched = SQLFetch(statement.get())); ++rows) {
        for (SQLSMALLINT column = 1; column <= columns; ++column) {
            SQLLEN length = 0;
            SQLGetData(statement.get(), static_cast<SQLUSMALLINT>(column), SQL_C_CHAR, value.data(),
                       static_cast<SQLLEN>(value.size()), &length);
            benchmark::DoNotOptimize(value.data());
        }
    }
    require(fetched == SQL_NO_DATA, "the table cannot be read to its end");
    return rows;
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) {
        ++found;
    }
    return found;
}

struct Case {
    const char* name;
    std::function<std::string(Client20&)> call;
};

const Case cases[] = {
    {"MasterData", [](Client20& client) { return client.MasterData("ITEM"); }},
    {"HyperLinkAndZoom",
     [](Client20& client) { return client.HyperLinkAndZoom(2, "Item", "", "material_1_10_1"); }},
};

// A component whose current database is open.
struct Opened {
    explicit Opened(const std::string& home)
        : machine(platform::openMachine(home)), module(machine->machine()), client(module) {
        client.Initialize();
        client.OpenDataBase();
    }

    std::unique_ptr<platform::OwnedMachine> machine;
    Module module;
    Client20 client;
};

void timeCall(benchmark::State& state, const Case& what, const std::string& home) {
    Opened opened(home);
    for (auto iteration : state) {
        benchmark::DoNotOptimize(what.call(opened.client));
    }
}

void timeFloor(benchmark::State& state, const Case& what, const std::string& home,
               const std::string& database) {
    Opened opened(home);
    const std::string returned = what.call(opened.client);
    const TemporaryFile file("");
    const Session session(driver + database + ";");
    require(count(returned, shown) >= readAll(session), "the table is not shown");
    for (auto iteration : state) {
        readAll(session);
        writeWhole(file.path(), returned);
    }
}

void add(const Case& what, const std::string& home, const std::string& file) {
    const std::string name = what.name;
    const auto call = [=, &what](benchmark::State& state) { timeCall(state, what, home); };
    const auto floor = [=, &what](benchmark::State& state) { timeFloor(state, what, home, file); };
    benchmark::RegisterBenchmark((name + "/call").c_str(), call)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/floor").c_str(), floor)->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int count, char** arguments) {
    try {
        benchmark::Initialize(&count, arguments);
        if (count != 3) {
            std::cerr << "usage: bench-masterdata HOME DATABASE\n";
            return 2;
        }
        for (const Case& what : cases) {
            add(what, arguments[1], arguments[2]);
        }
        return benchmark::RunSpecifiedBenchmarks() == 0 ? 1 : 0;
    } catch (const std::exception& fault) {
        std::cerr << "bench-masterdata: " << fault.what() << '\n';
        return 1;
    }
}
