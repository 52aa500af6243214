// The sample master data: the tables as CSV, the Access file and the extract of changes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include "samples/sample_files.h"

namespace tandril::samples {
namespace {

TEST(MasterDataSample, EveryRowBelongsToTheOneCompany) {
    const auto tables = masterTables();
    for (const char* table : {"SERVICEITEMS", "OBJECTS", "UNITS", "ADDRESSES"}) {
        for (const auto& row : tables.rows(table)) EXPECT_EQ(row.at("COMP"), "100") << table;
    }
}

TEST(MasterDataSample, EveryObjectBelongsToAConfiguration) {
    const auto tables = masterTables();
    for (const auto& row : tables.rows("OBJECTS")) {
        EXPECT_TRUE(tables.has("CONFIGURATIONS", {{"CCFG", row.at("CCFG")}})) << row.at("CROB");
    }
}

TEST(MasterDataSample, TextsKeepTheirUmlauts) {
    EXPECT_TRUE(masterTables().has("ADDRESSES", {{"DSCA", "Höhenweg 3, Ostwick"}}));
    EXPECT_TRUE(masterTables().has("UNITS", {{"CUNI", "m²"}}));
}

TEST(MasterDataSample, TheDatabaseIsAnAccessFile) {
    std::ifstream in(std::filesystem::path(TANDRIL_SAMPLES_DIR) / "masterdata/tandril.mdb",
                     std::ios::binary);
    char head[19] = {};
    in.read(head, sizeof head);
    ASSERT_TRUE(in);
    EXPECT_EQ(std::memcmp(head, "\0\1\0\0Standard Jet DB", sizeof head), 0);
}

// Applying the extract twice must not double a row, so each insertion follows its own deletion.
TEST(MasterDataSample, TheExtractDeletesEachRowBeforeItInsertsIt) {
    const auto extract = load("masterdata/extract.xml");
    int inserted = 0;
    for (const auto& row : extract.select_nodes("//HBMasterData/*/*[@STATUS='I']")) {
        const pugi::xml_node before = row.node().previous_sibling();
        EXPECT_STREQ(before.attribute("STATUS").value(), "D");
        EXPECT_STREQ(before.attribute("ID").value(), row.node().attribute("ID").value());
        EXPECT_STREQ(row.node().first_child().child_value(), row.node().attribute("ID").value());
        ++inserted;
    }
    EXPECT_EQ(inserted, 3);
}

TEST(MasterDataSample, TheExtractChangesRowsThatTheDatabaseHas) {
    const auto extract = load("masterdata/extract.xml");
    const auto tables = masterTables();
    const auto changed = extract.select_nodes("//HBMasterData/*/*[@STATUS='M']");
    ASSERT_EQ(changed.size(), 3U);
    for (const auto& found : changed) {
        const pugi::xml_node row = found.node();
        const std::string table = row.parent().name();
        const std::string id = row.attribute("ID").value();
        const bool known = table == "OBJECTS"
                               ? tables.has(table, {{"CCFG", row.attribute("CCFG").value()},
                                                    {"CROB", row.attribute("CROB").value()},
                                                    {"OSEQ", row.attribute("OSEQ").value()}})
                               : tables.has(table, {{table == "CONTACTS" ? "CCNT" : "ITEM", id}});
        EXPECT_TRUE(known) << table << " " << id;
    }
}

}  // namespace
}  // namespace tandril::samples
