// What the office makes of uploads: answers, real numbers, and the next download.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "enterprise/office_fixture.h"

namespace tandril::enterprise {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OfficeUpload : public testing::Test {
  protected:
    std::vector<std::string> send(const std::map<std::string, std::string>& sections) {
        return ownEntries(office_.takeUpload(upload(sections), Language::English));
    }
    Download download() { return Download(office_.orders()); }

    Office office_ = sampleOffice();
};

const char* const newOrder = R"(<record ServiceOrder="_1" State="N"><OrderStatus>15</OrderStatus>)"
                             R"(<Description>Kaffeemühle</Description></record>)";
const char* const newActivity =
    R"(<ServiceOrder ID="_1" State="N"><record Activity="_2" State="N">)"
    R"(<ActivityStatus>15</ActivityStatus></record></ServiceOrder>)";
const char* const goodLine =
    R"(<ServiceOrder ID="_1" Activity="_2"><record LineNumber="_3" State="N">)"
    R"(<Item>FLT-200</Item><Quantity>2</Quantity></record></ServiceOrder>)";
const char* const badLine =
    R"(<ServiceOrder ID="_1" Activity="_2"><record LineNumber="_4" State="N">)"
    R"(<Item>NOPE</Item></record></ServiceOrder>)";

TEST_F(OfficeUpload, BeforeTheFirstOneTheDownloadIsTheSampleAsItStands) {
    EXPECT_EQ(office_.orders(), sampleText("orders.xml"));
}

TEST_F(OfficeUpload, TheReportIsWrittenAsThePageExpectsIt) {
    office_.takeUpload(upload({{"ordr", newOrder}}), Language::English);
    EXPECT_EQ(office_.takeUpload(
                  upload({{"ordr", R"(<record ServiceOrder="9"><OrderStatus/></record>)"}}),
                  Language::English),
              R"(<UploadReport><File ID="20261113-0003"><Entry Status="Error" Order="9" )"
              R"(Activity="" CostLine="" CostType="" )"
              R"(Description="The office does not know this order."/></File></UploadReport>)");
}

TEST_F(OfficeUpload, TheFirstReportAlsoAnswersWhatTheSampleHoldsAsSent) {
    pugi::xml_document report;
    report.load_string(office_.takeUpload(upload({{"ordr", newOrder}}), Language::English).c_str());
    pugi::xml_document sample;
    sample.load_string(sampleText("orders.xml").c_str());
    const auto sent = sample.select_nodes(
        "/harbrook/ccsocservcordr/record[@State='NU' or @State='MU']"
        "|/harbrook/*/ServiceOrder/record[@State='NU' or @State='MU']");

    const auto files = elements(report.document_element());
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(elements(files[0]).size(), sent.size());
    std::vector<std::string> errors;
    for (const pugi::xml_node entry : elements(files[0])) {
        if (attribute(entry, "Status") == "Error") errors.push_back(entryText(entry));
    }
    EXPECT_THAT(errors, ElementsAre("Error 100203/10/Material_9201 There is no item \"FLT-3OO\".",
                                    "Error 100203/10/Labor_9211 The hours must be a number above "
                                    "0 and up to 24, not \"90\"."));
}

TEST_F(OfficeUpload, AChangeOfAKnownRecordIsTakenAndHandedOut) {
    EXPECT_THAT(send({{"ordr", R"(<record ServiceOrder="100201" State="M"><OrderStatus>15)"
                               R"(</OrderStatus><Description>Größer</Description></record>)"}}),
                ElementsAre("Completed 100201//"));
    const Download next = download();
    EXPECT_STREQ(next.order("100201").child_value("Description"), "Größer");
    EXPECT_STREQ(next.order("100201").attribute("State").value(), "O");
}

TEST_F(OfficeUpload, ANewOrderGetsRealNumbersAllTheWayDown) {
    EXPECT_THAT(send({{"ordr", newOrder}, {"actv", newActivity}, {"matl", goodLine}}),
                ElementsAre("Completed _1//", "Completed _1/_2/", "Completed _1/_2/Material_3"));
    const Download next = download();
    EXPECT_FALSE(next.order("_1"));
    EXPECT_STREQ(next.order("100223").child_value("Description"), "Kaffeemühle");
    EXPECT_TRUE(next.activity("100223", "10"));
    EXPECT_STREQ(next.line("ccsocservcmatl", "100223", "10", "10").child_value("Item"), "FLT-200");
    EXPECT_FALSE(next.order("100223").attribute("From"));
}

TEST_F(OfficeUpload, AnotherNewOrderUnderTheSameProvisionalNumberIsANewOne) {
    send({{"ordr", newOrder}, {"actv", newActivity}});
    send({{"ordr", R"(<record ServiceOrder="_1"><OrderStatus>15</OrderStatus>)"
                   R"(<Description>Another</Description></record>)"}});
    EXPECT_STREQ(download().order("100223").child_value("Description"), "Kaffeemühle");
    EXPECT_STREQ(download().order("100224").child_value("Description"), "Another");
}

TEST_F(OfficeUpload, ANewOrderWithARefusedLineKeepsItsProvisionalNumber) {
    EXPECT_THAT(send({{"ordr", newOrder}, {"actv", newActivity}, {"matl", badLine}}),
                ElementsAre("Completed _1//", "Completed _1/_2/",
                            "Error _1/_2/Material_4 There is no item \"NOPE\"."));
    EXPECT_FALSE(download().order("100223"));
    EXPECT_FALSE(download().order("_1"));
}

TEST_F(OfficeUpload, ACorrectedLineBringsTheNewOrderItsNumber) {
    send({{"ordr", newOrder}, {"actv", newActivity}, {"matl", badLine}});
    std::string corrected = badLine;
    corrected.replace(corrected.find("NOPE"), 4, "FLT-300");
    EXPECT_THAT(send({{"ordr", newOrder}, {"actv", newActivity}, {"matl", corrected}}),
                ElementsAre("Completed _1//", "Completed _1/_2/", "Completed _1/_2/Material_4"));
    EXPECT_TRUE(download().line("ccsocservcmatl", "100223", "10", "10"));
    EXPECT_FALSE(download().order("100224"));
}

// The line may have been deleted: the order must not be held back for ever. Or it comes corrected
// later: then it belongs to the order that has its number by now.
TEST_F(OfficeUpload, ANewOrderSentAgainWithoutItsRefusedLineIsTakenAndStillKnown) {
    send({{"ordr", newOrder}, {"actv", newActivity}, {"matl", badLine}});
    send({{"ordr", newOrder}, {"actv", newActivity}});
    EXPECT_TRUE(download().order("100223"));
    std::string corrected = badLine;
    corrected.replace(corrected.find("NOPE"), 4, "FLT-300");
    send({{"ordr", newOrder}, {"actv", newActivity}, {"matl", corrected}});
    EXPECT_FALSE(download().order("100224"));
    EXPECT_STREQ(download().root().child("ccsocservcmatl").last_child().attribute("ID").value(),
                 "100223");
}

TEST_F(OfficeUpload, WhatHangsBelowARefusedNewRecordWaitsWithoutAnEntry) {
    EXPECT_THAT(send({{"ordr", R"(<record ServiceOrder="_1"><OrderStatus>15</OrderStatus>)"
                               R"(<Configuration>C-999</Configuration></record>)"},
                      {"actv", newActivity},
                      {"matl", goodLine}}),
                ElementsAre("Error _1// There is no configuration \"C-999\"."));
    EXPECT_THAT(send({{"actv", R"(<ServiceOrder ID="100201"><record Activity="_7">)"
                               R"(<Configuration>C-999</Configuration></record></ServiceOrder>)"},
                      {"othr", R"(<ServiceOrder ID="100201" Activity="_7">)"
                               R"(<record LineNumber="_8"/></ServiceOrder>)"}}),
                ElementsAre("Error 100201/_7/ There is no configuration \"C-999\"."));
}

TEST_F(OfficeUpload, ANewActivityOfAKnownOrderGetsTheNextNumber) {
    EXPECT_THAT(send({{"actv", R"(<ServiceOrder ID="100201"><record Activity="_5">)"
                               R"(<ActivityStatus>15</ActivityStatus></record></ServiceOrder>)"},
                      {"labr", R"(<ServiceOrder ID="100201" Activity="_5">)"
                               R"(<record LineNumber="_6"><Hours>1,5</Hours></record>)"
                               R"(</ServiceOrder>)"}}),
                ElementsAre("Completed 100201/_5/", "Completed 100201/_5/Labor_6"));
    EXPECT_TRUE(download().activity("100201", "30"));
    EXPECT_TRUE(download().line("ccsocservclabr", "100201", "30", "10"));
}

TEST_F(OfficeUpload, ALineThatTheComputerKeepsIsNotHandedOutUnderItsProvisionalNumber) {
    const std::string line =
        R"(<ServiceOrder ID="100201" Activity="10"><record LineNumber="_6"><Amount>3</Amount>)"
        R"(</record></ServiceOrder>)";
    EXPECT_THAT(send({{"othr", line}}), ElementsAre("Completed 100201/10/Other_6"));
    EXPECT_FALSE(download().line("ccsocservcothr", "100201", "10", "_6"));
    EXPECT_FALSE(download().line("ccsocservcothr", "100201", "10", "10"));
}

TEST_F(OfficeUpload, CompletedOrdersAndActivitiesAreNotHandedOutAgain) {
    send({{"ordr", R"(<record ServiceOrder="100201"><OrderStatus>20</OrderStatus></record>)"},
          {"actv", R"(<ServiceOrder ID="100202"><record Activity="10">)"
                   R"(<ActivityStatus>20</ActivityStatus></record></ServiceOrder>)"}});
    const Download next = download();
    EXPECT_FALSE(next.order("100201"));
    EXPECT_FALSE(next.activity("100201", "10"));
    EXPECT_TRUE(next.order("100202"));
    EXPECT_FALSE(next.activity("100202", "10"));
    EXPECT_FALSE(next.line("ccsocservcmatl", "100202", "10", "10"));
    EXPECT_TRUE(next.activity("100202", "20"));
}

TEST_F(OfficeUpload, ALineWhoseChangeWasRefusedIsNotOverwrittenUntilItIsTaken) {
    const std::string line =
        R"(<ServiceOrder ID="100201" Activity="10"><record LineNumber="10"><Item>%</Item>)"
        R"(</record></ServiceOrder>)";
    std::string wrong = line;
    std::string right = line;
    wrong.replace(line.find('%'), 1, "PCB");
    right.replace(line.find('%'), 1, "PCB-CTL");
    EXPECT_THAT(send({{"matl", wrong}}),
                ElementsAre("Error 100201/10/Material10 There is no item \"PCB\"."));
    EXPECT_FALSE(download().line("ccsocservcmatl", "100201", "10", "10"));
    EXPECT_THAT(send({{"matl", right}}), ElementsAre("Completed 100201/10/Material10"));
    EXPECT_TRUE(download().line("ccsocservcmatl", "100201", "10", "10"));
}

TEST_F(OfficeUpload, AnHourRegistrationIsALabourLineWithoutOrder) {
    EXPECT_THAT(send({{"labr", R"(<ServiceOrder ID="" Activity=""><record LineNumber="_9">)"
                               R"(<Hours>25</Hours></record><record LineNumber="_10">)"
                               R"(<Hours>2</Hours></record></ServiceOrder>)"}}),
                ElementsAre("Error //Labor_9 The hours must be a number above 0 and up to 24, "
                            "not \"25\".",
                            "Completed //Labor_10"));
}

TEST_F(OfficeUpload, AKnownHourRegistrationIsChangedInItsPlace) {
    send({{"labr", R"(<ServiceOrder ID="" Activity=""><record LineNumber="30"><Hours>0.5</Hours>)"
                   R"(</record></ServiceOrder>)"}});
    const Download next = download();
    EXPECT_STREQ(next.line("ccsocservclabr", "", "", "30").child_value("Hours"), "0.5");
    EXPECT_STREQ(next.line("ccsocservclabr", "", "", "10").child_value("Hours"), "1");
}

TEST_F(OfficeUpload, HoursOfOneDayAddUpAcrossOrders) {
    const auto line = [](const char* order, const char* number, const char* hours) {
        return std::string(R"(<ServiceOrder ID=")") + order +
               R"(" Activity="10"><record LineNumber=")" + number + R"("><Hours>)" + hours +
               "</Hours><StartDate>20261117 080000</StartDate><Employee>Zoë</Employee></record>"
               "</ServiceOrder>";
    };
    EXPECT_THAT(send({{"labr", line("100201", "_1", "20")}}),
                ElementsAre("Completed 100201/10/Labor_1"));
    EXPECT_THAT(send({{"labr", line("100202", "_2", "6.5")}}),
                ElementsAre("Error 100202/10/Labor_2 That makes \"26.5\" hours on one day, more "
                            "than 24."));
    EXPECT_THAT(send({{"labr", line("100201", "_1", "16")}}),
                ElementsAre("Completed 100201/10/Labor_1"));
    EXPECT_THAT(send({{"labr", line("100202", "_2", "6")}}),
                ElementsAre("Completed 100202/10/Labor_2"));
}

TEST_F(OfficeUpload, RecordsOfUnknownOrdersAndActivitiesAreRefused) {
    EXPECT_THAT(send({{"actv", R"(<ServiceOrder ID="7"><record Activity="10"/></ServiceOrder>)"
                               R"(<ServiceOrder ID="100201"><record Activity="99"/>)"
                               R"(</ServiceOrder>)"},
                      {"matl", R"(<ServiceOrder ID="7" Activity="10"><record LineNumber="1"/>)"
                               R"(</ServiceOrder><ServiceOrder ID="100201" Activity="99">)"
                               R"(<record LineNumber="1"/></ServiceOrder>)"}}),
                ElementsAre("Error 7/10/ The office does not know this order.",
                            "Error 100201/99/ The office does not know this activity.",
                            "Error 7/10/Material1 The office does not know this order.",
                            "Error 100201/99/Material1 The office does not know this activity."));
}

TEST_F(OfficeUpload, RegistrationsKeptApartAreTakenWithoutAnEntry) {
    EXPECT_THAT(send({{"hra", R"(<record LineNumber="_9311"><Hours>1</Hours></record>)"}}),
                IsEmpty());
}

TEST_F(OfficeUpload, EveryThirdUploadClosesTheLeastUrgentAndLatestOrder) {
    send({{"ordr", newOrder}});
    EXPECT_STREQ(download().order("100210").child_value("OrderStatus"), "15");
    send({{"actv", newActivity}});
    const Download next = download();
    const pugi::xml_node closed = next.order("100210");
    EXPECT_STREQ(closed.child_value("OrderStatus"), "35");
    EXPECT_STREQ(closed.child_value("ClosingDate"), "20261113 190000");
    EXPECT_STREQ(closed.child_value("CancelReason"), "CUS");
    EXPECT_STREQ(next.activity("100210", "10").child_value("ActivityStatus"), "35");
}

TEST_F(OfficeUpload, AClosedOrderTakesNoChangesUntilADownloadHasTold) {
    const char* const change =
        R"(<record ServiceOrder="100210"><OrderStatus>15</OrderStatus></record>)";
    send({{"ordr", newOrder}});
    send({{"actv", newActivity}});
    EXPECT_THAT(send({{"ordr", change}}),
                ElementsAre("Error 100210// The office has closed this order; the next download "
                            "says why."));
    download();
    EXPECT_THAT(send({{"ordr", change}, {"hra", R"(<record LineNumber="1"/>)"}}),
                ElementsAre("Completed 100210//"));
}

TEST_F(OfficeUpload, TheAnswerIsInTheLanguageThatWasAskedFor) {
    const std::string bad = upload({{"ordr", R"(<record ServiceOrder="9"/>)"}});
    EXPECT_THAT(ownEntries(office_.takeUpload(bad, Language::German)),
                ElementsAre("Error 9// Das Büro kennt diesen Auftrag nicht."));
    const std::string worse = upload({{"ordr", R"(<record ServiceOrder="8"/>)"}});
    EXPECT_THAT(ownEntries(office_.takeUpload(worse, Language::Dutch)),
                ElementsAre("Error 8// Het kantoor kent deze order niet."));
}

TEST_F(OfficeUpload, WhatIsNoUploadIsRefusedAndChangesNothing) {
    for (const char* text : {"", "<harbrook>", "<other/>", "<!DOCTYPE x><harbrook/>"}) {
        EXPECT_THROW(office_.takeUpload(text, Language::English), BadUpload) << text;
    }
    EXPECT_EQ(office_.orders(), sampleText("orders.xml"));
}

}  // namespace
}  // namespace tandril::enterprise
