#include "forms/record_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "platform/fault.h"
#include "support/documents.h"

namespace tandril::test {
namespace {

using store::CheckedRecord;
using store::CheckFinding;
using store::Section;

constexpr std::string_view fields =
    "<ccsocservcordr><Description LABEL='What'/></ccsocservcordr>"
    "<I18N><T ID='SLBEU0327' DESCRIPTION='is missing'/><T ID='SLBEU0328' DESCRIPTION='is no date'/>"
    "<T ID='SLBEU0329' DESCRIPTION='needs a flag'/><T ID='SLBEU0330' DESCRIPTION='must be empty'/>"
    "<T ID='SLBEU0373' DESCRIPTION='is unknown'/></I18N>";

// Master data that knows what it was told, answers anything about "fault" with a fault, and notes
// what it was asked.
class ToldMasterData : public forms::MasterDataLookUp {
  public:
    bool hasValue(std::string_view field, std::string_view value) override {
        return answer(std::string(field) + "=" + std::string(value));
    }
    bool hasObject(std::string_view configuration, std::string_view object) override {
        return answer("object " + std::string(configuration) + "/" + std::string(object));
    }
    bool hasObjectNumber(std::string_view configuration, std::string_view number) override {
        return answer("number " + std::string(configuration) + "/" + std::string(number));
    }

    std::set<std::string> known;
    std::vector<std::string> asked;

  private:
    bool answer(const std::string& question) {
        asked.push_back(question);
        if (question.ends_with("fault")) {
            throw Fault("no answer to " + question);
        }
        return known.contains(question);
    }
};

// One text for each finding; the faults of look-ups in brackets.
std::vector<std::string> textsOf(const std::vector<CheckFinding>& findings) {
    std::vector<std::string> texts;
    for (const CheckFinding& finding : findings) {
        texts.push_back(finding.kind == CheckFinding::Kind::Failure ? finding.text
                                                                    : "[" + finding.text + "]");
    }
    return texts;
}

struct RecordCheck : testing::Test {
    mapper::FieldMapper mapper = mapperOf(fields);
    ToldMasterData masterData;

    std::vector<std::string> check(Section section, std::string_view children,
                                   std::string_view activityStatus = "") {
        const xml::Document record = document("<r>" + std::string(children) + "</r>");
        forms::RecordCheck rules(&mapper, masterData);
        return textsOf(rules.check(CheckedRecord{
            .section = section, .record = record.root(), .activityStatus = activityStatus}));
    }
    std::vector<std::string> checkEdit(Section section, std::string_view children,
                                       std::string_view edited,
                                       std::string_view activityStatus = "") {
        const xml::Document record = document("<r>" + std::string(children) + "</r>");
        const xml::Document edit = document("<e>" + std::string(edited) + "</e>");
        forms::RecordCheck rules(&mapper, masterData);
        return textsOf(rules.check(CheckedRecord{.section = section,
                                                 .record = record.root(),
                                                 .edit = edit.root(),
                                                 .activityStatus = activityStatus}));
    }
};

// A rule, as one field of a record shows it. `before` stands in front of the field.
struct RuleCase {
    Section section;
    const char* status;
    const char* field;
    const char* value;
    const char* failure;  // "" for none
    const char* before = "";
};

constexpr const char* date = "20261115 115939";
constexpr const char* noDate = "20261315 115939";
constexpr const char* missing = "is missing";
constexpr const char* invalid = "is no date";
constexpr const char* unknown = "is unknown";

constexpr RuleCase ruleCases[] = {
    // Dates of orders.
    {Section::Orders, "15", "OrderDate", "", missing},
    {Section::Orders, "15", "OrderDate", date, ""},
    {Section::Orders, "15", "OrderDate", noDate, invalid},
    {Section::Orders, "20", "OrderDate", "", ""},
    {Section::Orders, "20", "OrderDate", noDate, invalid},
    {Section::Orders, "15", "PlannedStartTime", "", ""},
    {Section::Orders, "15", "PlannedStartTime", noDate, invalid},
    {Section::Orders, "35", "PlannedFinishTime", noDate, invalid},
    {Section::Orders, "15", "StartDate", "", ""},
    {Section::Orders, "15", "StartDate", noDate, invalid},
    {Section::Orders, "15", "ExecutionStartTime", noDate, invalid},
    {Section::Orders, "15", "ExecutionFinishTime", noDate, invalid},
    {Section::Orders, "15", "ExecutionFinishTime", date, ""},
    {Section::Orders, "15", "ClosingDate", noDate, ""},
    // Dates of activities.
    {Section::Activities, "15", "PlannedStartTime", "", missing},
    {Section::Activities, "20", "PlannedFinishTime", "", missing},
    {Section::Activities, "15", "PlannedFinishTime", noDate, invalid},
    {Section::Activities, "15", "PlannedStartTime", date, ""},
    {Section::Activities, "15", "ExecutionStartTime", "", ""},
    {Section::Activities, "15", "ExecutionStartTime", noDate, invalid},
    {Section::Activities, "15", "ExecutionFinishTime", noDate, invalid},
    {Section::Activities, "15", "OrderDate", noDate, ""},
    {Section::Activities, "15", "StartDate", "", ""},
    // Dates of labour lines; the ones that need not be filled are invalid when they are empty.
    {Section::Labour, "15", "StartDate", "", missing},
    {Section::Labour, "15", "StartDate", noDate, invalid},
    {Section::Labour, "15", "StartDate", date, ""},
    {Section::Labour, "15", "OrderDate", "", invalid},
    {Section::Labour, "15", "PlannedStartTime", "", invalid},
    {Section::Labour, "15", "PlannedFinishTime", noDate, invalid},
    {Section::Labour, "15", "ExecutionStartTime", "", invalid},
    {Section::Labour, "15", "ExecutionFinishTime", date, ""},
    // Dates of other lines are not judged.
    {Section::Material, "15", "StartDate", "", ""},
    {Section::Other, "15", "PlannedStartTime", noDate, ""},
    // What must be filled everywhere.
    {Section::Orders, "20", "EndDate", "", missing},
    {Section::Material, "15", "EndDate", "0", missing},
    {Section::Labour, "15", "EndDate", "00", ""},
    {Section::Other, "15", "EndDate", noDate, ""},
    {Section::Activities, "15", "ActivityDescription", "", missing},
    {Section::Other, "15", "ActivityDescription", "0", ""},
    {Section::Orders, "20", "Description", "", "is missing"},
    {Section::Material, "20", "Description", "V", ""},
    // The reason of an interruption.
    {Section::Orders, "15", "InterruptionReason", "", missing, "<Interrupted>1</Interrupted>"},
    {Section::Orders, "15", "InterruptionReason", "ok", "", "<Interrupted>1</Interrupted>"},
    {Section::Orders, "15", "InterruptionReason", "V", unknown, "<Interrupted>1</Interrupted>"},
    {Section::Orders, "15", "InterruptionReason", "", "", "<Interrupted>2</Interrupted>"},
    {Section::Orders, "20", "InterruptionReason", "V", "must be empty",
     "<Interrupted>2</Interrupted>"},
    {Section::Orders, "15", "InterruptionReason", "V", "needs a flag",
     "<Interrupted>3</Interrupted>"},
    {Section::Orders, "15", "InterruptionReason", "V", "needs a flag"},
    {Section::Orders, "15", "InterruptionReason", "", ""},
    {Section::Orders, "20", "InterruptionReason", "V", unknown},
    {Section::Orders, "20", "InterruptionReason", "ok", ""},
    {Section::Activities, "15", "InterruptionReason", "V", unknown, "<Interrupted>2</Interrupted>"},
    {Section::Activities, "15", "InterruptionReason", "", "", "<Interrupted>1</Interrupted>"},
    // Statuses and unknown fields are accepted as they stand.
    {Section::Activities, "15", "OrderStatus", "99", ""},
    {Section::Orders, "15", "ActivityStatus", "", ""},
    {Section::Orders, "15", "ServiceType", "V", ""},
    {Section::Orders, "15", "ReferenceA", "", ""},
};

TEST_F(RecordCheck, RuleOfEachField) {
    masterData.known = {"InterruptionReason=ok"};
    for (const RuleCase& row : ruleCases) {
        const std::string name(row.field);
        const std::string children = "<Status>" + std::string(row.status) + "</Status>" +
                                     row.before + "<" + name + ">" + row.value + "</" + name + ">";
        const bool isLabelled = row.section == Section::Orders && name == "Description";
        std::vector<std::string> expected;
        if (*row.failure != '\0') {
            expected.push_back((isLabelled ? "What" : name) + " " + row.failure);
        }
        EXPECT_EQ(check(row.section, children, row.status), expected)
            << store::sectionName(row.section) << " " << row.status << " " << name << "="
            << row.value;
    }
}

TEST_F(RecordCheck, CodesAreLookedUpInEverySection) {
    for (const std::string name :
         {"ProblemPriority", "Problem", "Solution", "ReferenceActivity", "Unit", "Task",
          "HourlyLaborType", "ServiceItem", "SalesQuantityUnit"}) {
        for (const Section section : {Section::Orders, Section::Activities, Section::Material}) {
            masterData.known = {name + "=good"};
            const std::string open = "<Status>20</Status><" + name + ">";
            const std::string close = "</" + name + ">";
            EXPECT_THAT(check(section, open + "good" + close, "20"), testing::IsEmpty());
            EXPECT_THAT(check(section, open + "bad" + close, "20"),
                        testing::ElementsAre(name + " is unknown"));
            masterData.asked.clear();
            EXPECT_THAT(check(section, open + close, "20"), testing::IsEmpty());
            EXPECT_THAT(masterData.asked, testing::IsEmpty()) << name;
        }
    }
}

TEST_F(RecordCheck, SomeCodesAreLookedUpWhileTheRecordIsOpenOnly) {
    for (const std::string name : {"Configuration", "CostComponent", "ActualWarehouse"}) {
        const std::string field = "<" + name + ">bad</" + name + ">";
        EXPECT_THAT(check(Section::Orders, "<Status>15</Status>" + field),
                    testing::ElementsAre(name + " is unknown"));
        EXPECT_THAT(check(Section::Orders, "<Status>20</Status>" + field), testing::IsEmpty());
        EXPECT_THAT(check(Section::Activities, "<Status>15</Status>" + field),
                    testing::ElementsAre(name + " is unknown"));
        EXPECT_THAT(check(Section::Material, "<Status>20</Status>" + field, "15"),
                    testing::ElementsAre(name + " is unknown"));
        EXPECT_THAT(check(Section::Material, "<Status>15</Status>" + field, "20"),
                    testing::IsEmpty());
    }
}

TEST_F(RecordCheck, PriorityZeroCountsAsEmpty) {
    EXPECT_THAT(check(Section::Orders, "<ProblemPriority>0</ProblemPriority>"), testing::IsEmpty());
    EXPECT_THAT(masterData.asked, testing::IsEmpty());
}

TEST_F(RecordCheck, ObjectsAreLookedUpInTheRecordsOwnConfiguration) {
    masterData.known = {"object C-100/OB1", "number C-100/1"};
    EXPECT_THAT(check(Section::Orders,
                      "<S>20</S><Object>OB1</Object><ObjectNumber>1</ObjectNumber>"
                      "<Configuration>C-100</Configuration>"),
                testing::IsEmpty());
    EXPECT_THAT(check(Section::Orders,
                      "<S>20</S><Configuration>C-200</Configuration><Object>OB1</Object>"
                      "<ObjectNumber>1</ObjectNumber>"),
                testing::ElementsAre("Object is unknown", "ObjectNumber is unknown"));
    EXPECT_THAT(check(Section::Activities, "<S>20</S><Object>OB1</Object>"),
                testing::ElementsAre("Object is unknown"));
    EXPECT_EQ(masterData.asked.back(), "object /OB1");
}

TEST_F(RecordCheck, EmptyObjectsPass) {
    EXPECT_THAT(check(Section::Orders, "<Object/><ObjectNumber/>"), testing::IsEmpty());
    EXPECT_THAT(masterData.asked, testing::IsEmpty());
}

TEST_F(RecordCheck, FindingsComeInTheOrderOfTheFields) {
    EXPECT_THAT(
        check(Section::Orders,
              "<OrderStatus>15</OrderStatus><Problem>bad</Problem><Solution>fault</Solution>"
              "<Description/><OrderDate>x</OrderDate>"),
        testing::ElementsAre("Problem is unknown", "[no answer to Solution=fault]",
                             "What is missing", "OrderDate is no date"));
}

TEST_F(RecordCheck, LookUpThatFailsCountsAsPassed) {
    const std::vector<std::string> findings =
        check(Section::Orders,
              "<S>15</S><Object>fault</Object><ObjectNumber>fault</ObjectNumber>"
              "<Configuration>fault</Configuration>");
    EXPECT_THAT(findings, testing::ElementsAre("[no answer to object fault/fault]",
                                               "[no answer to number fault/fault]",
                                               "[no answer to Configuration=fault]"));
}

TEST_F(RecordCheck, WordsOfADatabaseAreOneLine) {
    EXPECT_THAT(check(Section::Orders, "<S>15</S><Problem>a\nfault</Problem>"),
                testing::ElementsAre("[no answer to Problem=a fault]"));
}

TEST_F(RecordCheck, RepeatedFieldIsJudgedEachTime) {
    EXPECT_THAT(check(Section::Orders,
                      "<S>15</S><Description/><Description>V</Description>"
                      "<Description/>"),
                testing::ElementsAre("What is missing", "What is missing"));
}

TEST_F(RecordCheck, EmptyRecordIsGood) {
    EXPECT_THAT(check(Section::Orders, ""), testing::IsEmpty());
    EXPECT_THAT(check(Section::Labour, "", "15"), testing::IsEmpty());
}

TEST_F(RecordCheck, EditIsJudgedByTheFieldsThatItCarriesInItsOrder) {
    EXPECT_THAT(checkEdit(Section::Orders,
                          "<OrderStatus>15</OrderStatus><Description/><StartDate/><EndDate/>",
                          "<EndDate/><StartDate>x</StartDate>"),
                testing::ElementsAre("EndDate is missing", "StartDate is no date"));
}

TEST_F(RecordCheck, EditedFieldThatTheRecordLacksIsIgnored) {
    EXPECT_THAT(checkEdit(Section::Orders, "<OrderStatus>15</OrderStatus>", "<Description/>"),
                testing::IsEmpty());
    EXPECT_THAT(checkEdit(Section::Orders, "<S>15</S><InterruptionReason/>",
                          "<Interrupted>1</Interrupted><InterruptionReason/>"),
                testing::IsEmpty());
}

TEST_F(RecordCheck, OfTwoEditedTextsForAFieldTheLastCounts) {
    EXPECT_THAT(checkEdit(Section::Orders, "<OrderStatus>15</OrderStatus><OrderDate>x</OrderDate>",
                          "<OrderDate/><OrderStatus>15</OrderStatus><OrderStatus>20</OrderStatus>"),
                testing::IsEmpty());
}

TEST_F(RecordCheck, StatusAndFlagAreTheEditedOnes) {
    EXPECT_THAT(checkEdit(Section::Orders, "<OrderStatus>20</OrderStatus><OrderDate/>",
                          "<OrderDate/><OrderStatus>15</OrderStatus>"),
                testing::ElementsAre("OrderDate is missing"));
    EXPECT_THAT(checkEdit(Section::Orders, "<OrderStatus>15</OrderStatus><OrderDate/>",
                          "<OrderDate/><OrderStatus>20</OrderStatus>"),
                testing::IsEmpty());
    EXPECT_THAT(
        checkEdit(Section::Orders, "<S>15</S><Interrupted>2</Interrupted><InterruptionReason/>",
                  "<InterruptionReason/><Interrupted>1</Interrupted>"),
        testing::ElementsAre("InterruptionReason is missing"));
}

TEST_F(RecordCheck, MasterDataIsAskedForChangedTextsOnly) {
    EXPECT_THAT(checkEdit(Section::Orders,
                          "<S>15</S><Problem>bad</Problem><Solution>bad</Solution>"
                          "<Configuration>C1</Configuration><Object>bad</Object>"
                          "<ObjectNumber>7</ObjectNumber>",
                          "<Problem>bad</Problem><Solution>worse</Solution><Object>bad</Object>"
                          "<Configuration>C2</Configuration><ObjectNumber>8</ObjectNumber>"),
                testing::ElementsAre("Solution is unknown", "Configuration is unknown",
                                     "ObjectNumber is unknown"));
    EXPECT_THAT(masterData.asked,
                testing::ElementsAre("Solution=worse", "Configuration=C2", "number C2/8"));
}

TEST_F(RecordCheck, UnchangedTextIsStillJudgedByTheOtherRules) {
    EXPECT_THAT(checkEdit(Section::Orders, "<S>15</S><Description/>", "<Description/>"),
                testing::ElementsAre("What is missing"));
}

TEST_F(RecordCheck, FailureWithoutTextShowsTheCode) {
    const mapper::FieldMapper bare = mapperOf("");
    const xml::Document record = document("<r><Description/></r>");
    const CheckedRecord checked{.section = Section::Orders, .record = record.root()};
    EXPECT_THAT(textsOf(forms::RecordCheck(&bare, masterData).check(checked)),
                testing::ElementsAre("Description SLBEU0327"));
    EXPECT_THAT(textsOf(forms::RecordCheck(nullptr, masterData).check(checked)),
                testing::ElementsAre("Description SLBEU0327"));
}

}  // namespace
}  // namespace tandril::test
