// What holds on every working day, whatever happens on it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "component/workstation.h"
#include "store/merge.h"
#include "store/records.h"
#include "store/removed_records.h"
#include "system/working_day.h"

namespace tandril::test {
namespace {

constexpr int daysPerProperty = 12;
constexpr int callsPerDay = 50;

// A day on a machine of fakes.
struct Day : Workstation {
    explicit Day(std::uint32_t seed) : day(machine.files, seed) {
        prepareDay(machine.files);
        client.Initialize();
    }

    std::string make(const DayCall& call) { return test::make(client, call); }
    std::map<std::string, std::string> filesButTheLog() const {
        std::map<std::string, std::string> contents;
        for (const std::string_view path :
             {paths::store, paths::report, paths::upload, paths::removed}) {
            contents[std::string(path)] = machine.files.content(path);
        }
        return contents;
    }
    store::OrderStore storeNow() const {
        return store::OrderStore::from(xml::load(machine.files, paths::store)).value();
    }

    WorkingDay day;
};

class EveryDay : public testing::TestWithParam<std::uint32_t> {};

TEST_P(EveryDay, ASecondMergeOfTheSameDocumentTakesNothing) {
    Day day(GetParam());
    ScriptedCheck check;
    for (int i = 0; i < callsPerDay; ++i) {
        const std::string xml = day.day.download();
        store::OrderStore store = day.storeNow();
        const xml::CheckedText document = xml::checked(xml).value();
        store::merge(store, document, check);
        const std::string merged = sectionsOf(store);
        EXPECT_FALSE(store::merge(store, document, check).tookAnything());
        EXPECT_TRUE(sectionsOf(store) == merged);
        day.make(day.day.next());
    }
}

TEST_P(EveryDay, ASecondDownloadOfTheSameDocumentChangesOnlyTheLog) {
    Day day(GetParam());
    for (int i = 0; i < callsPerDay; ++i) {
        const std::string xml = day.day.download();
        day.client.DownloadXml(xml);
        // Orders that the first one closed stay over it; from then on nothing may change.
        day.client.DownloadXml(xml);
        const auto before = day.filesButTheLog();
        EXPECT_EQ(day.client.DownloadXml(xml), "SLBEU0322");
        EXPECT_TRUE(day.filesButTheLog() == before);
        day.make(day.day.next());
    }
}

TEST_P(EveryDay, ASecondUploadIsEmpty) {
    Day day(GetParam());
    for (int i = 0; i < callsPerDay; ++i) {
        day.client.CreateXMLStringForUpdate();
        const auto before = day.filesButTheLog();
        EXPECT_EQ(day.client.CreateXMLStringForUpdate(), "");
        EXPECT_TRUE(day.filesButTheLog() == before);
        day.make(day.day.next());
    }
}

// How the system stands to a record that was sent.
enum class Fate { Confirmed, Refused, Waiting, Lost };

// What the server said of the record: "Completed", "Error" or nothing.
std::string answerFor(const store::UploadReport& report, const store::RecordKey& key) {
    for (const store::ReportEntry& entry : report.entries()) {
        if (entry.key() == key) {
            return entry.isError() ? "Error" : "Completed";
        }
    }
    return {};
}

bool hasCopy(const store::RemovedRecords& copies, const store::RecordKey& key) {
    const auto entries = copies.entries();
    return std::any_of(entries.begin(), entries.end(),
                       [&](const auto& entry) { return entry.key == key; });
}

// The files behind the server's answer.
struct Answered {
    explicit Answered(const Day& day)
        : store(day.storeNow()),
          report(xml::load(day.machine.files, paths::report).value()),
          copies(xml::load(day.machine.files, paths::removed).value_or(document("<Removed/>"))) {}

    Fate fateOf(const store::RecordKey& key, const std::string& answer) const {
        const xml::Node record = store.record(key);
        const bool isSent = record && store::isSent(store::stateOf(record));
        if (answer == "Error") {
            return isSent && answerFor(report, key) == "Error" ? Fate::Refused : Fate::Lost;
        }
        const bool isSafe = !record && hasCopy(copies, key);
        if (answer == "Completed") {
            const bool isReset = record && store::isUnsent(store::stateOf(record));
            return isSafe || isReset ? Fate::Confirmed : Fate::Lost;
        }
        return isSafe || isSent ? Fate::Waiting : Fate::Lost;
    }

    store::OrderStore store;
    store::UploadReport report;
    store::RemovedRecords copies;
};

TEST_P(EveryDay, ConfirmedRefusedAndWaitingAddUpToWhatWasSent) {
    Day day(GetParam());
    for (int i = 0; i < callsPerDay; ++i) {
        const std::string upload = day.client.CreateXMLStringForUpdate();
        if (!upload.empty()) {
            const std::string answer = day.day.report();
            const store::UploadReport report(test::document(answer));
            EXPECT_EQ(day.client.DownloadErrors(answer), "");
            const Answered answered(day);
            std::map<Fate, std::size_t> fates;
            const xml::Document sent = test::document(upload);
            std::size_t all = 0;
            forEachRecord(sent.root(), [&](const store::RecordKey& key, xml::Node) {
                ++all;
                ++fates[answered.fateOf(key, answerFor(report, key))];
            });
            EXPECT_EQ(fates[Fate::Lost], 0U);
            EXPECT_EQ(fates[Fate::Refused], report.countErrors());
            EXPECT_EQ(fates[Fate::Confirmed], report.entries().size() - report.countErrors());
            EXPECT_EQ(fates[Fate::Confirmed] + fates[Fate::Refused] + fates[Fate::Waiting], all);
        }
        day.make(day.day.next());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, EveryDay, testing::Range(1U, 1U + daysPerProperty));

}  // namespace
}  // namespace tandril::test
