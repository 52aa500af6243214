// The lists of master data, each beside its floor: what the bare driver needs to read the same
// table and the system to write as many bytes. bench/calls prepares the home and makes a table.
//
//   bench-masterdata HOME DATABASE [OPTION...]    options of Google Benchmark

#include <benchmark/benchmark.h>
#include <sql.h>
#include <sqlext.h>

#include <array>
#include <cstdio>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include "component/client20.h"
#include "component/module.h"
#include "platform/machine.h"

namespace {

using namespace tandril;

// As the component opens a database file.
constexpr const char* driver = "Driver=libsqlite3odbc.so;NoCreat=1;StepAPI=1;Database=";
constexpr const char* query = "SELECT * FROM SERVICEITEMS";

void require(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

SQLCHAR* text(const std::string& value) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(value.c_str()));
}

// An open connection of the driver's, without anything of the component's.
class BareConnection {
  public:
    explicit BareConnection(const std::string& file) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
        SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION,
                      reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
        require(SQL_SUCCEEDED(SQLDriverConnect(connection_, nullptr, text(driver + file + ";"),
                                               SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)),
                "the driver does not open the database");
    }
    ~BareConnection() {
        SQLDisconnect(connection_);
        SQLFreeHandle(SQL_HANDLE_DBC, connection_);
        SQLFreeHandle(SQL_HANDLE_ENV, environment_);
    }
    BareConnection(const BareConnection&) = delete;
    BareConnection& operator=(const BareConnection&) = delete;

    // Reads every value of the table as text. Returns how many there were.
    std::size_t readAll() {
        SQLHSTMT statement = SQL_NULL_HANDLE;
        SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement);
        require(SQL_SUCCEEDED(SQLExecDirect(statement, text(query), SQL_NTS)), query);
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement, &columns);
        std::size_t values = 0;
        std::array<char, 1024> value;
        while (SQL_SUCCEEDED(SQLFetch(statement))) {
            for (SQLSMALLINT column = 1; column <= columns; ++column) {
                SQLLEN length = 0;
                SQLGetData(statement, static_cast<SQLUSMALLINT>(column), SQL_C_CHAR, value.data(),
                           static_cast<SQLLEN>(value.size()), &length);
                benchmark::DoNotOptimize(value.data());
                ++values;
            }
        }
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        return values;
    }

  private:
    SQLHENV environment_ = SQL_NULL_HANDLE;
    SQLHDBC connection_ = SQL_NULL_HANDLE;
};

void writePlainly(const std::string& bytes) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
    require(file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size(),
            "cannot write a temporary file");
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
               const std::string& file) {
    Opened opened(home);
    const std::string returned = what.call(opened.client);
    BareConnection connection(file);
    for (auto iteration : state) {
        require(connection.readAll() > 0, "the table is empty");
        writePlainly(returned);
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
