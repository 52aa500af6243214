// What the office remembers: across restarts, across repeated uploads, and when saving fails.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "enterprise/office_fixture.h"
#include "platform/fault.h"

namespace tandril::enterprise {
namespace {

namespace fs = std::filesystem;

const char* const orderText =
    R"(<record ServiceOrder="_1"><OrderStatus>15</OrderStatus><Description>Über Nacht)"
    R"(</Description></record>)";

class OfficeMemory : public testing::Test {
  protected:
    Office office() const { return sampleOffice(folder_.path()); }
    std::string memory() const { return fileText(file_); }

    TemporaryFolder folder_;
    const fs::path file_ = folder_.path() / "enterprise.xml";
    const std::string upload_ = upload({{"ordr", orderText}});
};

TEST_F(OfficeMemory, TheSameBytesGetTheSameAnswerAndChangeNothing) {
    Office office = this->office();
    const std::string report = office.takeUpload(upload_, Language::English);
    const std::string after = memory();
    EXPECT_EQ(office.takeUpload(upload_, Language::German), report);
    EXPECT_EQ(memory(), after);
}

TEST_F(OfficeMemory, AnAnswerOutlivesTheProgram) {
    std::string report;
    {
        Office office = this->office();
        report = office.takeUpload(upload_, Language::English);
    }
    Office restarted = office();
    EXPECT_EQ(restarted.takeUpload(upload_, Language::English), report);
}

TEST_F(OfficeMemory, OrdersAndNumbersOutliveTheProgram) {
    {
        Office office = this->office();
        office.takeUpload(upload_, Language::English);
    }
    Office restarted = office();
    const Download next(restarted.orders());
    EXPECT_STREQ(next.order("100223").child_value("Description"), "Über Nacht");
}

TEST_F(OfficeMemory, TheDownloadIsTheSameUntilSomethingIsSent) {
    Office office = this->office();
    office.takeUpload(upload_, Language::English);
    const std::string first = office.orders();
    EXPECT_EQ(office.orders(), first);
}

TEST_F(OfficeMemory, AnUploadThatCannotBeSavedIsNotTaken) {
    Office office = this->office();
    fs::remove_all(folder_.path());
    EXPECT_THROW(office.takeUpload(upload_, Language::English), Fault);
    EXPECT_EQ(office.orders(), sampleText("orders.xml"));
    fs::create_directory(folder_.path());
    EXPECT_THAT(ownEntries(office.takeUpload(upload_, Language::English)),
                testing::ElementsAre("Completed _1//"));
}

TEST_F(OfficeMemory, ADamagedFileIsNamedAndKept) {
    for (const char* text : {"<enterprise", "<other/>", ""}) {
        std::ofstream(file_) << text;
        try {
            office();
            ADD_FAILURE() << "taken: " << text;
        } catch (const std::runtime_error& failure) {
            EXPECT_THAT(failure.what(), testing::HasSubstr(file_.string()));
            EXPECT_THAT(failure.what(), testing::HasSubstr("Move it away"));
        }
        EXPECT_EQ(memory(), text);
    }
}

TEST_F(OfficeMemory, AFolderIsCreated) {
    const fs::path deep = folder_.path() / "a" / "b";
    sampleOffice(deep);
    EXPECT_TRUE(fs::exists(deep / "enterprise.xml"));
}

TEST_F(OfficeMemory, WithoutAFolderNothingIsKept) {
    Office forgetful = sampleOffice();
    forgetful.takeUpload(upload_, Language::English);
    EXPECT_EQ(sampleOffice().orders(), sampleText("orders.xml"));
}

TEST_F(OfficeMemory, OnlyTheLastHundredAnswersAreKept) {
    Office office = sampleOffice();
    const auto numbered = [](int number) {
        return upload({{"ordr", R"(<record ServiceOrder="x)" + std::to_string(number) + R"("/>)"}});
    };
    const std::string second = office.takeUpload(numbered(0), Language::English);
    const std::string kept = office.takeUpload(numbered(1), Language::English);
    for (int number = 2; number <= 100; ++number) {
        office.takeUpload(numbered(number), Language::English);
    }
    EXPECT_EQ(office.takeUpload(numbered(1), Language::English), kept);
    EXPECT_NE(office.takeUpload(numbered(0), Language::English), second);
}

}  // namespace
}  // namespace tandril::enterprise
