#include "masterdata/tables.h"

#include <gmock/gmock.h>

#include <set>
#include <string>

namespace tandril::test {
namespace {

using masterdata::Table;

struct CodeCase {
    std::string_view code, name, titleCode;
};

class TableOfCode : public ::testing::TestWithParam<CodeCase> {};

INSTANTIATE_TEST_SUITE_P(
    All, TableOfCode,
    ::testing::Values(
        CodeCase{"ITEM", "SERVICEITEMS", "SLBEU0195"},
        CodeCase{"CSTP", "SERVICETYPES", "SLBEU0193"}, CodeCase{"SKIT", "SERVICEKITS", "SLBEU0203"},
        CodeCase{"SCAR", "SERVICECAR", "SLBEU9199"},
        CodeCase{"CWOC", "SERVICECENTERS", "SLBEU9200"}, CodeCase{"TASK", "TASKS", "SLBEU0307"},
        CodeCase{"CHLT", "HOURLYLABORTYPE", "SLBEU9137"},
        CodeCase{"CRAC", "REFERENCEACTIVITIES", "SLBEU0197"},
        CodeCase{"CCFG", "CONFIGURATIONS", "SLBUE9216"}, CodeCase{"PROB", "PROBLEMS", "SLBUE9217"},
        CodeCase{"SOLU", "SOLUTIONS", "SLBUE9218"}, CodeCase{"CADR", "ADDRESSES", "SLBUE9206"},
        CodeCase{"CWAR", "WAREHOUSES", "SLBUE9215"}, CodeCase{"UNIT", "UNITS", "SLBUE9171"},
        CodeCase{"REAS", "REASONS", "SLBUE9213"}, CodeCase{"CPCP", "COSTCOMPONENTS", "SLBUE9211"},
        CodeCase{"CSAR", "SERVICEAREAS", "SLBUE9198"}, CodeCase{"CCNT", "CONTACTS", "SLBUE9208"},
        CodeCase{"PRIO", "PRIORITIES", "SLBUE9212"}, CodeCase{"CROB", "OBJECTS", "SLBUE9191"}));

TEST_P(TableOfCode, HasItsNameAndTitle) {
    const Table* table = masterdata::tableOfCode(GetParam().code);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->name, GetParam().name);
    EXPECT_EQ(table->titleCode, GetParam().titleCode);
    EXPECT_EQ(masterdata::tableOfName(GetParam().name), table);
}

struct FieldCase {
    std::string_view field, keyColumn, table;
};

class TableOfField : public ::testing::TestWithParam<FieldCase> {};

INSTANTIATE_TEST_SUITE_P(
    All, TableOfField,
    ::testing::Values(
        FieldCase{"Configuration", "CCFG", "CONFIGURATIONS"},
        FieldCase{"ServiceType", "CSTP", "SERVICETYPES"}, FieldCase{"Object", "CROB", "OBJECTS"},
        FieldCase{"OriginalObject", "CROB", "OBJECTS"}, FieldCase{"NewObject", "CROB", "OBJECTS"},
        FieldCase{"Problem", "CPRL", "PROBLEMS"}, FieldCase{"Solution", "CSTN", "SOLUTIONS"},
        FieldCase{"Task", "CTSK", "TASKS"}, FieldCase{"CostComponent", "CPCP", "COSTCOMPONENTS"},
        FieldCase{"HourlyLaborType", "CHLT", "HOURLYLABORTYPE"},
        FieldCase{"Item", "ITEM", "SERVICEITEMS"}, FieldCase{"ModelItem", "ITEM", "SERVICEITEMS"},
        FieldCase{"ServiceCenter", "CWOC", "SERVICECENTERS"},
        FieldCase{"InterruptionReason", "CDIS", "REASONS"},
        FieldCase{"CancelReason", "CDIS", "REASONS"},
        FieldCase{"SoldtoAddress", "CADR", "ADDRESSES"}, FieldCase{"Address", "CADR", "ADDRESSES"},
        FieldCase{"ServiceArea", "CSAR", "SERVICEAREAS"},
        FieldCase{"ServiceCar", "CCAR", "SERVICECAR"},
        FieldCase{"SalesQuantityUnit", "CUNI", "UNITS"}, FieldCase{"Unit", "CUNI", "UNITS"},
        FieldCase{"ProblemPriority", "PRIO", "PRIORITIES"},
        FieldCase{"SoldtoContact", "CCNT", "CONTACTS"},
        FieldCase{"ServiceKit", "CSKT", "SERVICEKITS"},
        FieldCase{"ActualWarehouse", "CWAR", "WAREHOUSES"},
        FieldCase{"ReferenceActivity", "CRAC", "REFERENCEACTIVITIES"},
        FieldCase{"ServiceItem", "CRAC", "REFERENCEACTIVITIES"},
        FieldCase{"object", "CRAC", "REFERENCEACTIVITIES"},
        FieldCase{"", "CRAC", "REFERENCEACTIVITIES"},
        FieldCase{"Nothing", "CRAC", "REFERENCEACTIVITIES"}));

TEST_P(TableOfField, HasItsKeyColumn) {
    const Table& table = masterdata::zoomTable(GetParam().field);
    EXPECT_EQ(table.name, GetParam().table);
    EXPECT_EQ(table.keyColumn, GetParam().keyColumn);
}

TEST(CheckTable, IsTheZoomTableButForServiceItems) {
    EXPECT_EQ(masterdata::checkTable("ServiceItem").name, "SERVICEITEMS");
    EXPECT_EQ(masterdata::checkTable("ServiceItem").keyColumn, "ITEM");
    EXPECT_EQ(&masterdata::checkTable("Unit"), &masterdata::zoomTable("Unit"));
}

TEST(Tables, AreInTheOrderOfSynchronisation) {
    std::vector<std::string_view> names;
    for (const Table& table : masterdata::tables()) names.push_back(table.name);
    EXPECT_THAT(names,
                ::testing::ElementsAre(
                    "HOURLYLABORTYPE", "REFERENCEACTIVITIES", "SERVICEAREAS", "SERVICECAR",
                    "SERVICECENTERS", "SERVICEITEMS", "SERVICEKITS", "SERVICETYPES", "TASKS",
                    "ADDRESSES", "CONTACTS", "COSTCOMPONENTS", "PRIORITIES", "REASONS", "UNITS",
                    "WAREHOUSES", "CONFIGURATIONS", "OBJECTS", "PROBLEMS", "SOLUTIONS"));
}

TEST(Tables, AreNotFoundByOtherNames) {
    for (const std::string_view name : {"", "item", " ITEM", "CUNI", "SERVICEITEMS"}) {
        EXPECT_EQ(masterdata::tableOfCode(name), nullptr) << name;
    }
    for (const std::string_view name : {"", "units", "UNIT"}) {
        EXPECT_EQ(masterdata::tableOfName(name), nullptr) << name;
    }
}

}  // namespace
}  // namespace tandril::test
