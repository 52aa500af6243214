// The sample orders: every state and status, complete records, and references that lead somewhere.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "samples/sample_files.h"

namespace tandril::samples {
namespace {

using testing::UnorderedElementsAreArray;

const std::vector<std::string> allStates{"O", "N", "M", "NU", "MU"};
const std::vector<std::string> allStatuses{"15", "20", "35"};

class OrderSample : public testing::Test {
  protected:
    pugi::xml_node section(const std::string& name) const {
        return document_.document_element().child(name.c_str());
    }
    std::vector<pugi::xml_node> orders() const { return elements(section("ccsocservcordr")); }
    // The records of all groups of a section.
    std::vector<pugi::xml_node> groupedRecords(const std::string& name) const {
        std::vector<pugi::xml_node> records;
        for (const pugi::xml_node group : elements(section(name))) {
            for (const pugi::xml_node record : elements(group)) records.push_back(record);
        }
        return records;
    }
    std::vector<std::pair<std::string, pugi::xml_node>> allRecords() const {
        std::vector<std::pair<std::string, pugi::xml_node>> records;
        for (const pugi::xml_node order : orders()) records.emplace_back("ccsocservcordr", order);
        for (std::string name :
             {"ccsocservcactv", "ccsocservcmatl", "ccsocservclabr", "ccsocservcothr"}) {
            for (const pugi::xml_node record : groupedRecords(name)) {
                records.emplace_back(name, record);
            }
        }
        for (const pugi::xml_node line : elements(section("ccsocservchra"))) {
            records.emplace_back("ccsocservchra", line);
        }
        return records;
    }
    pugi::xml_node order(std::string_view number) const {
        return section("ccsocservcordr")
            .find_child_by_attribute("ServiceOrder", std::string(number).c_str());
    }
    static std::string state(pugi::xml_node node) { return node.attribute("State").value(); }

    const pugi::xml_document document_ = load("orders.xml");
    const pugi::xml_document mapper_ = load("fieldmapper-en.xml");
};

TEST_F(OrderSample, HasTheSectionsOfTheStore) {
    EXPECT_STREQ(document_.document_element().name(), "harbrook");
    EXPECT_EQ(elementNames(document_.document_element()), recordSections());
}

TEST_F(OrderSample, HoldsTwentyFiveOrders) {
    EXPECT_EQ(orders().size(), 25U);
}

TEST_F(OrderSample, OrdersAndActivitiesStandInEveryCombinationOfStatusAndState) {
    std::set<std::pair<std::string, std::string>> wanted;
    for (const auto& status : allStatuses) {
        for (const auto& state : allStates) wanted.emplace(status, state);
    }
    std::set<std::pair<std::string, std::string>> orderKinds;
    for (const pugi::xml_node record : orders()) {
        orderKinds.emplace(record.child_value("OrderStatus"), state(record));
    }
    std::set<std::pair<std::string, std::string>> activityKinds;
    for (const pugi::xml_node record : groupedRecords("ccsocservcactv")) {
        activityKinds.emplace(record.child_value("ActivityStatus"), state(record));
    }
    EXPECT_EQ(orderKinds, wanted);
    EXPECT_EQ(activityKinds, wanted);
}

TEST_F(OrderSample, CostLinesAndHourRegistrationsStandInEveryState) {
    for (const std::string& name : costSections()) {
        std::set<std::string> states;
        for (const pugi::xml_node line : groupedRecords(name)) states.insert(state(line));
        EXPECT_THAT(states, UnorderedElementsAreArray(allStates)) << name;
    }
    const pugi::xml_node hours = section("ccsocservclabr").find_child([](pugi::xml_node group) {
        return !*group.attribute("ID").value();
    });
    ASSERT_TRUE(hours);
    EXPECT_STREQ(hours.attribute("Activity").value(), "");
    std::set<std::string> states;
    for (const pugi::xml_node line : elements(hours)) states.insert(state(line));
    EXPECT_THAT(states, UnorderedElementsAreArray(allStates));
}

// A record that can be closed by the office needs its fields up to the 23rd.
TEST_F(OrderSample, OrdersHaveEveryFieldOfTheFieldMapperInItsOrder) {
    auto fields = elementNames(mapper_.document_element().child("ccsocservcordr"));
    fields.erase(fields.begin());
    ASSERT_GE(fields.size(), 23U);
    for (const pugi::xml_node record : orders()) {
        EXPECT_EQ(elementNames(record), fields) << record.attribute("ServiceOrder").value();
    }
}

// Otherwise the cells of a list row would not stand below their headings.
TEST_F(OrderSample, RecordsHoldTheListColumnsInTheOrderOfTheHeader) {
    for (const auto& [name, record] : allRecords()) {
        std::vector<std::string> columns;
        std::vector<std::string> cells;
        for (const pugi::xml_node field :
             elements(mapper_.document_element().child(name.c_str()))) {
            const std::string shown = field.attribute("UINTERFACE").value();
            const std::string fieldName = field.name();
            const bool key =
                fieldName == "ServiceOrder" || fieldName == "Activity" || fieldName == "LineNumber";
            if ((shown == "1" || shown == "3") && !key) columns.push_back(fieldName);
        }
        for (const std::string& field : elementNames(record)) {
            if (std::ranges::find(columns, field) != columns.end()) cells.push_back(field);
        }
        EXPECT_EQ(cells, columns) << name << " " << record.first_attribute().value();
    }
}

TEST_F(OrderSample, RecordsHoldOnlyFieldsOfTheirSection) {
    for (const auto& [name, record] : allRecords()) {
        const auto known = elementNames(mapper_.document_element().child(name.c_str()));
        EXPECT_THAT(elementNames(record), testing::IsSubsetOf(known))
            << name << " " << record.first_attribute().value();
    }
}

TEST_F(OrderSample, KeysAreUnique) {
    std::set<std::vector<std::string>> keys;
    for (const auto& [name, record] : allRecords()) {
        const pugi::xml_node group = record.parent();
        const std::vector<std::string> key{name, group.attribute("ID").value(),
                                           group.attribute("Activity").value(),
                                           record.first_attribute().value()};
        EXPECT_NE(key.back(), "") << name;
        EXPECT_TRUE(keys.insert(key).second) << testing::PrintToString(key);
    }
}

// The numbers that the client draws for new records begin at _1.
TEST_F(OrderSample, ProvisionalNumbersAreOutOfTheWayOfTheClients) {
    for (const auto& [name, record] : allRecords()) {
        const std::string number = record.first_attribute().value();
        if (number[0] != '_') continue;
        EXPECT_GE(std::stoi(number.substr(1)), 9000) << name;
    }
}

TEST_F(OrderSample, NewRecordsHaveProvisionalNumbersAndOthersHaveNot) {
    for (const auto& [name, record] : allRecords()) {
        const std::string number = record.first_attribute().value();
        const bool created = state(record)[0] == 'N';
        EXPECT_EQ(number[0] == '_', created) << name << " " << number;
    }
}

TEST_F(OrderSample, EveryOrderHasAnActivityAndEveryGroupItsOrder) {
    std::set<std::string> withActivities;
    for (const pugi::xml_node group : elements(section("ccsocservcactv"))) {
        EXPECT_FALSE(elements(group).empty());
        withActivities.insert(group.attribute("ID").value());
    }
    std::set<std::string> numbers;
    for (const pugi::xml_node record : orders()) {
        numbers.insert(record.attribute("ServiceOrder").value());
    }
    EXPECT_EQ(withActivities, numbers);
}

TEST_F(OrderSample, EveryCostGroupBelongsToAnActivityAndCarriesItsDescription) {
    for (const std::string& name : costSections()) {
        for (const pugi::xml_node group : elements(section(name))) {
            const std::string number = group.attribute("ID").value();
            if (number.empty()) continue;
            const pugi::xml_node activity =
                section("ccsocservcactv")
                    .find_child_by_attribute("ID", number.c_str())
                    .find_child_by_attribute("Activity", group.attribute("Activity").value());
            ASSERT_TRUE(activity) << name << " " << number;
            for (const pugi::xml_node line : elements(group)) {
                EXPECT_STREQ(line.child_value("ActivityDescription"),
                             activity.child_value("ActivityDescription"));
            }
        }
    }
}

TEST_F(OrderSample, GroupsAreSentWhenTheirNewRecordsWere) {
    for (const std::string& name : recordSections()) {
        for (const pugi::xml_node group : section(name).children("ServiceOrder")) {
            EXPECT_THAT(state(group), testing::AnyOf("O", "N", "NU")) << name;
            if (state(group) == "NU") {
                for (const pugi::xml_node record : elements(group)) EXPECT_EQ(state(record), "NU");
            }
        }
    }
}

TEST_F(OrderSample, StatusesOfOrdersAndActivitiesFitTogether) {
    for (const pugi::xml_node group : elements(section("ccsocservcactv"))) {
        const std::string status = order(group.attribute("ID").value()).child_value("OrderStatus");
        std::set<std::string> statuses;
        for (const pugi::xml_node record : elements(group)) {
            statuses.insert(record.child_value("ActivityStatus"));
        }
        if (status == "15") {
            EXPECT_TRUE(statuses.contains("15")) << group.attribute("ID").value();
        } else {
            EXPECT_EQ(statuses, std::set<std::string>{status}) << group.attribute("ID").value();
        }
    }
}

TEST_F(OrderSample, OnlyClosedOrdersHaveClosingFields) {
    for (const pugi::xml_node record : orders()) {
        const bool closed = std::string_view(record.child_value("OrderStatus")) == "35";
        EXPECT_EQ(*record.child_value("ClosingDate") != 0, closed);
        EXPECT_EQ(*record.child_value("CancelReason") != 0, closed);
    }
}

TEST_F(OrderSample, CompletedActivitiesTellWhenTheyWereDone) {
    for (const pugi::xml_node record : groupedRecords("ccsocservcactv")) {
        if (std::string_view(record.child_value("ActivityStatus")) != "20") continue;
        const std::string start = record.child_value("ExecutionStartTime");
        EXPECT_TRUE(isStamp(start));
        EXPECT_LT(start, std::string(record.child_value("ExecutionFinishTime")));
    }
}

TEST_F(OrderSample, DatesAreRealAndInTheAutumnOf2026) {
    int dates = 0;
    for (const auto& [name, record] : allRecords()) {
        for (const pugi::xml_node field : elements(record)) {
            const std::string type = mapper_.document_element()
                                         .child(name.c_str())
                                         .child(field.name())
                                         .attribute("DATATYPE")
                                         .value();
            const std::string text = field.child_value();
            if (type != "u" || text.empty()) continue;
            EXPECT_TRUE(isStamp(text)) << name << "/" << field.name() << " " << text;
            EXPECT_THAT(text, testing::StartsWith("202611"));
            ++dates;
        }
    }
    EXPECT_GT(dates, 200);
}

TEST_F(OrderSample, WhatARecordCheckRequiresIsFilled) {
    for (const auto& [name, record] : allRecords()) {
        for (const char* field : {"OrderDate", "Description", "ActivityDescription", "EndDate"}) {
            if (const pugi::xml_node child = record.child(field)) {
                EXPECT_STRNE(child.child_value(), "")
                    << name << " " << record.first_attribute().value() << " " << field;
            }
        }
    }
    for (const pugi::xml_node record : groupedRecords("ccsocservcactv")) {
        EXPECT_STRNE(record.child_value("PlannedStartTime"), "");
        EXPECT_STRNE(record.child_value("PlannedFinishTime"), "");
    }
}

TEST_F(OrderSample, AnInterruptionHasItsReason) {
    std::set<std::string> flags;
    for (const pugi::xml_node record : orders()) {
        const std::string flag = record.child_value("Interrupted");
        flags.insert(flag);
        EXPECT_EQ(*record.child_value("InterruptionReason") != 0, flag == "1");
    }
    EXPECT_EQ(flags, (std::set<std::string>{"0", "1", "2"}));
}

TEST_F(OrderSample, ValuesOfEnumeratedFieldsAreInTheirLists) {
    for (const auto& [name, record] : allRecords()) {
        for (const pugi::xml_node field : elements(record)) {
            const pugi::xml_node definition =
                mapper_.document_element().child(name.c_str()).child(field.name());
            if (std::string_view(definition.attribute("DATATYPE").value()) != "e") continue;
            EXPECT_TRUE(definition.find_child_by_attribute("Id", field.child_value()))
                << name << "/" << field.name() << " " << field.child_value();
        }
    }
}

TEST_F(OrderSample, CodesAreInTheMasterData) {
    const std::map<std::string_view, std::pair<std::string_view, std::string_view>> lookedUp{
        {"Configuration", {"CONFIGURATIONS", "CCFG"}},
        {"ServiceType", {"SERVICETYPES", "CSTP"}},
        {"Object", {"OBJECTS", "CROB"}},
        {"Problem", {"PROBLEMS", "CPRL"}},
        {"Solution", {"SOLUTIONS", "CSTN"}},
        {"Task", {"TASKS", "CTSK"}},
        {"CostComponent", {"COSTCOMPONENTS", "CPCP"}},
        {"HourlyLaborType", {"HOURLYLABORTYPE", "CHLT"}},
        {"ServiceItem", {"SERVICEITEMS", "ITEM"}},
        {"ModelItem", {"SERVICEITEMS", "ITEM"}},
        {"ServiceCenter", {"SERVICECENTERS", "CWOC"}},
        {"InterruptionReason", {"REASONS", "CDIS"}},
        {"CancelReason", {"REASONS", "CDIS"}},
        {"SoldtoAddress", {"ADDRESSES", "CADR"}},
        {"Address", {"ADDRESSES", "CADR"}},
        {"ServiceArea", {"SERVICEAREAS", "CSAR"}},
        {"ServiceCar", {"SERVICECAR", "CCAR"}},
        {"SalesQuantityUnit", {"UNITS", "CUNI"}},
        {"Unit", {"UNITS", "CUNI"}},
        {"ProblemPriority", {"PRIORITIES", "PRIO"}},
        {"SoldtoContact", {"CONTACTS", "CCNT"}},
        {"ServiceKit", {"SERVICEKITS", "CSKT"}},
        {"ActualWarehouse", {"WAREHOUSES", "CWAR"}},
        {"ReferenceActivity", {"REFERENCEACTIVITIES", "CRAC"}}};
    const auto tables = masterTables();
    std::set<std::string_view> used;
    for (const auto& [name, record] : allRecords()) {
        for (const pugi::xml_node field : elements(record)) {
            const auto rule = lookedUp.find(field.name());
            if (rule == lookedUp.end() || !*field.child_value()) continue;
            used.insert(rule->first);
            EXPECT_TRUE(
                tables.has(rule->second.first, {{rule->second.second, field.child_value()}}))
                << name << "/" << field.name() << " " << field.child_value();
        }
    }
    EXPECT_EQ(used.size(), lookedUp.size()) << "a field of the list is filled nowhere";
}

TEST_F(OrderSample, ObjectsBelongToTheirConfiguration) {
    const auto tables = masterTables();
    for (const auto& [name, record] : allRecords()) {
        if (!*record.child_value("Object")) continue;
        EXPECT_TRUE(tables.has("OBJECTS", {{"CCFG", record.child_value("Configuration")},
                                           {"CROB", record.child_value("Object")},
                                           {"OSEQ", record.child_value("ObjectNumber")}}))
            << name << " " << record.first_attribute().value();
    }
}

// Two lines were sent with slips, so that the office has something to refuse.
TEST_F(OrderSample, OnlyTheTwoIntendedSlipsAreInTheLines) {
    const auto tables = masterTables();
    std::vector<std::string> unknownItems;
    for (const pugi::xml_node line : groupedRecords("ccsocservcmatl")) {
        const std::string item = line.child_value("Item");
        if (!tables.has("SERVICEITEMS", {{"ITEM", item}})) unknownItems.push_back(item);
    }
    std::vector<double> longDays;
    for (const pugi::xml_node line : groupedRecords("ccsocservclabr")) {
        const double hours = line.child("Hours").text().as_double();
        if (hours > 24) longDays.push_back(hours);
        EXPECT_LT(std::string(line.child_value("StartDate")),
                  std::string(line.child_value("EndDate")));
    }
    EXPECT_THAT(unknownItems, testing::ElementsAre("FLT-3OO"));
    EXPECT_THAT(longDays, testing::ElementsAre(90.0));
}

TEST_F(OrderSample, NamesHoldUmlauts) {
    int named = 0;
    for (const pugi::xml_node record : orders()) {
        const std::string name = record.child_value("CustomerName");
        named += name.find_first_not_of(
                     "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ -9") != std::string::npos
                     ? 1
                     : 0;
    }
    EXPECT_GE(named, 20);
}

}  // namespace
}  // namespace tandril::samples
