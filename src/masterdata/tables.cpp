#include "masterdata/tables.h"

#include <algorithm>

namespace tandril::masterdata {
namespace {

// The title codes that begin with "SLBUE" are spelt so in the field mappers.
constexpr Table allTables[] = {
    {"CHLT", "HOURLYLABORTYPE", "CHLT", "SLBEU9137", {"HourlyLaborType"}},
    {"CRAC", "REFERENCEACTIVITIES", "CRAC", "SLBEU0197", {"ReferenceActivity"}},
    {"CSAR", "SERVICEAREAS", "CSAR", "SLBUE9198", {"ServiceArea"}},
    {"SCAR", "SERVICECAR", "CCAR", "SLBEU9199", {"ServiceCar"}},
    {"CWOC", "SERVICECENTERS", "CWOC", "SLBEU9200", {"ServiceCenter"}},
    {"ITEM", "SERVICEITEMS", "ITEM", "SLBEU0195", {"Item", "ModelItem"}},
    {"SKIT", "SERVICEKITS", "CSKT", "SLBEU0203", {"ServiceKit"}},
    {"CSTP", "SERVICETYPES", "CSTP", "SLBEU0193", {"ServiceType"}},
    {"TASK", "TASKS", "CTSK", "SLBEU0307", {"Task"}},
    {"CADR", "ADDRESSES", "CADR", "SLBUE9206", {"SoldtoAddress", "Address"}},
    {"CCNT", "CONTACTS", "CCNT", "SLBUE9208", {"SoldtoContact"}},
    {"CPCP", "COSTCOMPONENTS", "CPCP", "SLBUE9211", {"CostComponent"}},
    {"PRIO", "PRIORITIES", "PRIO", "SLBUE9212", {"ProblemPriority"}},
    {"REAS", "REASONS", "CDIS", "SLBUE9213", {"InterruptionReason", "CancelReason"}},
    {"UNIT", "UNITS", "CUNI", "SLBUE9171", {"SalesQuantityUnit", "Unit"}},
    {"CWAR", "WAREHOUSES", "CWAR", "SLBUE9215", {"ActualWarehouse"}},
    {"CCFG", "CONFIGURATIONS", "CCFG", "SLBUE9216", {"Configuration"}},
    {"CROB", "OBJECTS", "CROB", "SLBUE9191", {"Object", "OriginalObject", "NewObject"}},
    {"PROB", "PROBLEMS", "CPRL", "SLBUE9217", {"Problem"}},
    {"SOLU", "SOLUTIONS", "CSTN", "SLBUE9218", {"Solution"}},
};

constexpr std::string_view serviceItemField = "ServiceItem";

template <class Matches>
constexpr const Table* find(Matches matches) {
    const auto* found = std::find_if(std::begin(allTables), std::end(allTables), matches);
    return found == std::end(allTables) ? nullptr : found;
}

constexpr const Table& defaultTable =
    *find([](const Table& table) { return table.name == "REFERENCEACTIVITIES"; });
constexpr const Table& serviceItems =
    *find([](const Table& table) { return table.name == "SERVICEITEMS"; });

}  // namespace

std::span<const Table> tables() {
    return allTables;
}

const Table* tableOfCode(std::string_view code) {
    return find([code](const Table& table) { return table.code == code; });
}

const Table* tableOfName(std::string_view name) {
    return find([name](const Table& table) { return table.name == name; });
}

const Table& zoomTable(std::string_view field) {
    const Table* table = find([field](const Table& candidate) {
        // The unused places of the array are empty texts, and so may the field be.
        return !field.empty() && std::find(candidate.fields.begin(), candidate.fields.end(),
                                           field) != candidate.fields.end();
    });
    return table == nullptr ? defaultTable : *table;
}

const Table& checkTable(std::string_view field) {
    return field == serviceItemField ? serviceItems : zoomTable(field);
}

}  // namespace tandril::masterdata
