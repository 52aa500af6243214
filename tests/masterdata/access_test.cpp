// The windows on a real Access file.
#include <gmock/gmock.h>

#include "masterdata/hostile_values.h"
#include "masterdata/listing.h"
#include "masterdata/look_up.h"
#include "masterdata/synchronisation.h"
#include "masterdata/tables.h"
#include "masterdata/windows.h"
#include "masterdata/zoom.h"
#include "platform/machine.h"
#include "support/read_file.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

using masterdata::Table;
using masterdata::WindowKind;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* filePath = "Vorn Tandril/MasterData/Sample.mdb";

class AccessTest : public ::testing::Test {
  protected:
    AccessTest() {
        home_.write(filePath, readFile(TANDRIL_SAMPLES "/masterdata/tandril.mdb"));
        platform::Machine machine = machine_->machine();
        constexpr const char* key = "SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data";
        machine.registry.createKey(platform::RegistryRoot::LocalMachine, key);
        machine.registry.setText(platform::RegistryRoot::LocalMachine, key, "DBQ",
                                 "C:\\Vorn Tandril\\MasterData\\Sample.mdb");
        connection_ = open();
    }
    std::unique_ptr<platform::Connection> open() {
        return machine_->machine().database.open("Tandril Master Data");
    }
    masterdata::Source source() {
        return {mapper_, true, [this]() -> platform::Connection& { return *connection_; }};
    }
    static std::size_t count(std::string_view text, std::string_view part) {
        std::size_t found = 0;
        for (std::size_t at = text.find(part); at != std::string_view::npos;
             at = text.find(part, at + 1)) {
            ++found;
        }
        return found;
    }

    TemporaryHome home_;
    std::unique_ptr<platform::OwnedMachine> machine_ = platform::openMachine(home_.path());
    std::unique_ptr<platform::Connection> connection_;
    mapper::FieldMapper mapper_ = windowTexts();
};

TEST_F(AccessTest, ListsAllTables) {
    const std::map<std::string_view, std::size_t> sizes = {
        {"HOURLYLABORTYPE", 6}, {"REFERENCEACTIVITIES", 8},
        {"SERVICEAREAS", 5},    {"SERVICECAR", 3},
        {"SERVICECENTERS", 2},  {"SERVICEITEMS", 12},
        {"SERVICEKITS", 3},     {"SERVICETYPES", 4},
        {"TASKS", 7},           {"ADDRESSES", 5},
        {"CONTACTS", 3},        {"COSTCOMPONENTS", 5},
        {"PRIORITIES", 4},      {"REASONS", 4},
        {"UNITS", 6},           {"WAREHOUSES", 4},
        {"CONFIGURATIONS", 5},  {"OBJECTS", 12},
        {"PROBLEMS", 6},        {"SOLUTIONS", 5}};
    for (const Table& table : masterdata::tables()) {
        const std::string html = masterdata::listing(source(), table.code);
        // Two rows of the title, two around the records, and the header.
        EXPECT_EQ(count(html, "<tr"), sizes.at(table.name) + 4) << html;
        EXPECT_THAT(html, Not(HasSubstr("COMP</td>")));
    }
}

TEST_F(AccessTest, ShowsUmlauts) {
    EXPECT_THAT(masterdata::listing(source(), "CADR"),
                HasSubstr("<tr><td nowrap>&nbsp;AD005</td><td nowrap>&nbsp;Höhenweg 3, Ostwick</td>"
                          "</tr>"));
}

TEST_F(AccessTest, ShowsTheObjectsOfAConfiguration) {
    const std::string html = masterdata::fieldWindow(source(), WindowKind::Zoom, "Object", "C-110");
    EXPECT_THAT(html,
                HasSubstr("<tr><td>C-110</td><td nowrap><a "
                          "href=javascript:FillValues(\"OB-111\",\"CROB\",\"1\")>OB-111</a></td>"
                          "<td>1</td><td>Supply fan</td></tr><tr><td>C-110</td><td nowrap><a "
                          "href=javascript:FillValues(\"OB-112\",\"CROB\",\"2\")>OB-112</a></td>"
                          "<td>2</td><td>Heat wheel</td></tr></table></td></tr></table>"));
}

TEST_F(AccessTest, ShowsTheRecordOfAnyKey) {
    for (const Table& table : masterdata::tables()) {
        const std::string field(table.fields.front());
        std::string key;
        connection_->query(
            "SELECT * FROM " + std::string(table.name), [](const auto&) {},
            [&](const std::vector<std::string>& record) {
                // The key is the column behind the company, but of objects the one behind that.
                key = record[table.name == masterdata::objectsTable ? 2 : 1];
                return true;
            });
        EXPECT_THAT(masterdata::fieldWindow(source(), WindowKind::Hyperlink, field, key),
                    HasSubstr("<td>" + key + "</td></tr>"))
            << table.name;
        EXPECT_THAT(masterdata::fieldWindow(source(), WindowKind::Zoom, field,
                                            field == "Object" ? "C-100" : ""),
                    HasSubstr("FillValues("))
            << table.name;
    }
}

TEST_F(AccessTest, AnswersHostileValuesAsSqliteDoes) {
    for (const std::string& value : hostileValues()) {
        if (readAsLiteral(value)) {
            EXPECT_THAT(masterdata::fieldWindow(source(), WindowKind::Hyperlink, "Problem", value),
                        HasSubstr("<tr><td>No record</td></tr>"))
                << value;
            EXPECT_FALSE(masterdata::hasObject(*connection_, "C-100", value));
        } else {
            EXPECT_THROW(masterdata::fieldWindow(source(), WindowKind::Hyperlink, "Problem", value),
                         Fault)
                << value;
        }
    }
}

TEST_F(AccessTest, AnswersLookUps) {
    EXPECT_TRUE(masterdata::hasValue(*connection_, "ServiceItem", "PCB-CTL"));
    EXPECT_FALSE(masterdata::hasValue(*connection_, "ServiceItem", "pcb-ctl"));
    EXPECT_TRUE(masterdata::hasObject(*connection_, "C-400", "OB-402"));
    EXPECT_FALSE(masterdata::hasObject(*connection_, "C-100", "OB-402"));
    EXPECT_TRUE(masterdata::hasObjectNumber(*connection_, "C-400", "2"));
    EXPECT_FALSE(masterdata::hasObjectNumber(*connection_, "C-400", "3"));
}

TEST_F(AccessTest, IsNotSynchronised) {
    const std::string before = home_.read(filePath);
    EXPECT_EQ(masterdata::synchronise("<HBMasterData COMP='100'><UNITS><r STATUS='D' ID='h'/>"
                                      "</UNITS></HBMasterData>",
                                      [this] { return open(); }),
              "SUCCESSFUL");
    EXPECT_TRUE(home_.read(filePath) == before);
}

}  // namespace
}  // namespace tandril::test
