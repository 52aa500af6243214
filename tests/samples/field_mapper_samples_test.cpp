// The sample field mappers: complete, equal in three languages, fit for the client's markup.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "samples/sample_files.h"

namespace tandril::samples {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSubsetOf;

// Regular expressions with sets of characters are not for every system.
auto hasNoneOf(const std::string& characters) {
    return testing::Truly([characters](const std::string& text) {
        return text.find_first_of(characters) == std::string::npos;
    });
}

class FieldMapperSample : public testing::TestWithParam<std::string> {
  protected:
    FieldMapperSample() : document_(load("fieldmapper-" + GetParam() + ".xml")) {}

    pugi::xml_node root() const { return document_.document_element(); }
    std::string text(const std::string& code) const {
        return root()
            .child("I18N")
            .find_child_by_attribute("ID", code.c_str())
            .attribute("DESCRIPTION")
            .value();
    }
    static std::string property(pugi::xml_node field, const char* name) {
        return field.attribute(name).value();
    }
    static bool isColumn(pugi::xml_node field) {
        const std::string shown = property(field, "UINTERFACE");
        return shown == "1" || shown == "3";
    }

  private:
    pugi::xml_document document_;
};

INSTANTIATE_TEST_SUITE_P(Languages, FieldMapperSample, testing::Values("en", "de", "nl"),
                         [](const auto& language) { return language.param; });

TEST_P(FieldMapperSample, HasEverySectionOnce) {
    EXPECT_THAT(elementNames(root()),
                ElementsAre("ccsocservcordr", "ccsocservcactv", "ccsocservcmatl", "ccsocservclabr",
                            "ccsocservcothr", "ccsocservchra", "zoomhyperlink", "I18N"));
}

TEST_P(FieldMapperSample, HasATextForEveryMessageCodeAndNoOther) {
    std::vector<std::string> codes;
    for (const pugi::xml_node text : elements(root().child("I18N"))) {
        codes.emplace_back(text.attribute("ID").value());
        EXPECT_STRNE(text.attribute("DESCRIPTION").value(), "") << codes.back();
    }
    ASSERT_EQ(messageCodes().size(), 112U);
    EXPECT_THAT(codes, testing::UnorderedElementsAreArray(messageCodes()));
}

TEST_P(FieldMapperSample, TextsOfUnquotedButtonsAreOneWord) {
    for (const char* code : {"SLBEU0282", "SLBEU0284", "SLBEU0285"}) {
        EXPECT_THAT(text(code), hasNoneOf(" \"'=<>`")) << code;
    }
}

TEST_P(FieldMapperSample, TextsAndLabelsHoldNoMarkup) {
    const auto plain = hasNoneOf("<>&\"");
    for (const std::string& code : messageCodes()) EXPECT_THAT(text(code), plain) << code;
    for (const std::string& section : recordSections()) {
        for (const pugi::xml_node field : elements(root().child(section.c_str()))) {
            EXPECT_THAT(field.attribute("LABEL").value(), plain) << section << field.name();
        }
    }
}

// The cells of the key links stand before the cells of the fields, so the header row needs the keys
// as its first columns and the records must not hold them as fields.
TEST_P(FieldMapperSample, KeysAreTheFirstColumnsOfEverySection) {
    const std::map<std::string, std::vector<std::string>> keys{
        {"ccsocservcordr", {"ServiceOrder"}},
        {"ccsocservcactv", {"ServiceOrder", "Activity"}},
        {"ccsocservcmatl", {"ServiceOrder", "Activity", "LineNumber"}},
        {"ccsocservclabr", {"ServiceOrder", "Activity", "LineNumber"}},
        {"ccsocservcothr", {"ServiceOrder", "Activity", "LineNumber"}},
        {"ccsocservchra", {"ServiceOrder", "Activity", "LineNumber"}}};
    for (const auto& [section, names] : keys) {
        const auto fields = elements(root().child(section.c_str()));
        ASSERT_GT(fields.size(), names.size()) << section;
        for (std::size_t at = 0; at < names.size(); ++at) {
            EXPECT_EQ(fields[at].name(), names[at]) << section;
            EXPECT_TRUE(isColumn(fields[at])) << section << " " << names[at];
        }
    }
}

// The column layout of the lists has seven columns.
TEST_P(FieldMapperSample, EverySectionHasSevenColumns) {
    for (const std::string& section : recordSections()) {
        int columns = 0;
        for (const pugi::xml_node field : elements(root().child(section.c_str()))) {
            columns += isColumn(field) ? 1 : 0;
        }
        EXPECT_EQ(columns, 7) << section;
    }
}

TEST_P(FieldMapperSample, EveryFieldHasItsSevenPropertiesWithKnownValues) {
    for (const pugi::xml_node section : elements(root())) {
        if (std::string_view(section.name()) == "I18N") continue;
        std::set<std::string> seen;
        for (const pugi::xml_node field : elements(section)) {
            const std::string where = std::string(section.name()) + "/" + field.name();
            EXPECT_TRUE(seen.insert(field.name()).second) << where;
            EXPECT_STRNE(field.attribute("LABEL").value(), "") << where;
            EXPECT_THAT(property(field, "DATATYPE"), AnyOf("s", "e", "u", "t")) << where;
            EXPECT_THAT(property(field, "UINTERFACE"), AnyOf("1", "2", "3")) << where;
            for (const char* flag : {"MODIFIABLE", "ZOOM", "HYPERLINK", "NEW"}) {
                EXPECT_THAT(property(field, flag), AnyOf("True", "False")) << where << flag;
            }
        }
    }
}

TEST_P(FieldMapperSample, TheStatusIsTheFirstFieldAndTheClosingFieldsAre22And23) {
    const auto order = elementNames(root().child("ccsocservcordr"));
    ASSERT_GE(order.size(), 24U);
    EXPECT_EQ(order[1], "OrderStatus");
    EXPECT_EQ(order[22], "ClosingDate");
    EXPECT_EQ(order[23], "CancelReason");
    EXPECT_EQ(elementNames(root().child("ccsocservcactv"))[2], "ActivityStatus");
}

TEST_P(FieldMapperSample, StatusListsAreInTheOrderOpenCompletedClosed) {
    for (const auto& [section, field] : {std::pair("ccsocservcordr", "OrderStatus"),
                                         std::pair("ccsocservcactv", "ActivityStatus")}) {
        std::vector<std::string> ids;
        for (const pugi::xml_node value : elements(root().child(section).child(field))) {
            ids.emplace_back(value.attribute("Id").value());
        }
        EXPECT_THAT(ids, ElementsAre("15", "20", "35")) << field;
    }
}

TEST_P(FieldMapperSample, EveryEnumeratedFieldHasAValueList) {
    for (const std::string& section : recordSections()) {
        for (const pugi::xml_node field : elements(root().child(section.c_str()))) {
            if (std::string_view(field.attribute("DATATYPE").value()) != "e") continue;
            const auto values = elements(field);
            EXPECT_GE(values.size(), 2U) << field.name();
            for (const pugi::xml_node value : values) {
                EXPECT_STRNE(value.attribute("Id").value(), "") << field.name();
                EXPECT_STRNE(value.attribute("Value").value(), "") << field.name();
            }
        }
    }
}

// What a record check requires can only be filled in where the creation form shows it.
TEST_P(FieldMapperSample, RequiredFieldsAreOnTheCreationForms) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> required{
        {"ccsocservcordr", {"OrderDate", "Description"}},
        {"ccsocservcactv", {"ActivityDescription", "PlannedStartTime", "PlannedFinishTime"}},
        {"ccsocservcmatl", {"Description"}},
        {"ccsocservclabr", {"Description", "StartDate", "EndDate"}},
        {"ccsocservcothr", {"Description"}}};
    for (const auto& [section, fields] : required) {
        for (const std::string& name : fields) {
            const auto field = root().child(section.c_str()).child(name.c_str());
            EXPECT_STREQ(field.attribute("NEW").value(), "True") << section << "/" << name;
        }
    }
}

TEST_P(FieldMapperSample, LabelsEveryColumnOfTheMasterData) {
    const auto labelled = elementNames(root().child("zoomhyperlink"));
    const auto tables = masterTables();
    for (const char* table :
         {"HOURLYLABORTYPE", "REFERENCEACTIVITIES", "SERVICEAREAS", "SERVICECAR", "SERVICECENTERS",
          "SERVICEITEMS",    "SERVICEKITS",         "SERVICETYPES", "TASKS",      "ADDRESSES",
          "CONTACTS",        "COSTCOMPONENTS",      "PRIORITIES",   "REASONS",    "UNITS",
          "WAREHOUSES",      "CONFIGURATIONS",      "OBJECTS",      "PROBLEMS",   "SOLUTIONS"}) {
        ASSERT_FALSE(tables.rows(table).empty()) << table;
        for (const auto& [column, value] : tables.rows(table).front()) {
            EXPECT_THAT(labelled, Contains(column)) << table;
        }
    }
}

// Apart from the words, the three files say the same.
TEST_P(FieldMapperSample, HasTheFieldsAndPropertiesOfTheEnglishOne) {
    const auto english = load("fieldmapper-en.xml");
    for (const pugi::xml_node section : elements(english.document_element())) {
        const pugi::xml_node own = root().child(section.name());
        ASSERT_EQ(elementNames(own), elementNames(section)) << section.name();
        const auto fields = elements(section);
        const auto ownFields = elements(own);
        for (std::size_t at = 0; at < fields.size(); ++at) {
            for (const char* name :
                 {"DATATYPE", "MODIFIABLE", "UINTERFACE", "ZOOM", "HYPERLINK", "NEW", "ID"}) {
                EXPECT_STREQ(ownFields[at].attribute(name).value(),
                             fields[at].attribute(name).value())
                    << section.name() << "/" << fields[at].name() << " " << name;
            }
            EXPECT_EQ(elements(ownFields[at]).size(), elements(fields[at]).size());
        }
    }
}

// A German or Dutch text that equals the English one is a forgotten translation, unless the word is
// the same in both languages.
TEST(FieldMapperTranslations, TextsAreInTheFilesLanguage) {
    const auto english = load("fieldmapper-en.xml");
    for (const char* name : {"fieldmapper-de.xml", "fieldmapper-nl.xml"}) {
        const auto translated = load(name);
        const pugi::xml_node texts = translated.document_element().child("I18N");
        std::set<std::string> same;
        for (const pugi::xml_node entry : elements(english.document_element().child("I18N"))) {
            const std::string code = entry.attribute("ID").value();
            const std::string text = entry.attribute("DESCRIPTION").value();
            const pugi::xml_node own = texts.find_child_by_attribute("ID", code.c_str());
            if (text == own.attribute("DESCRIPTION").value()) same.insert(text);
        }
        EXPECT_THAT(same, IsSubsetOf({"Material", "Record"})) << name;
    }
}

}  // namespace
}  // namespace tandril::samples
