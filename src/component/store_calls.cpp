#include "component/store_calls.h"

#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "component/paths.h"
#include "component/record_checks.h"
#include "component/report_calls.h"
#include "store/add.h"
#include "store/complete.h"
#include "store/edit.h"
#include "store/merge.h"
#include "store/purge.h"
#include "store/remove.h"
#include "store/upload.h"
#include "xml/encoding.h"

namespace tandril::store_calls {
namespace {

constexpr const char* downloadedMessage = "New Data has been downloaded.";

// Without the working mode the component was never initialised.
bool isInitialised(Call& call) {
    return !call.settings().mode().empty();
}

// Takes the finished orders out, apart from those to keep.
void purgeFinished(Call& call, const std::unordered_set<std::string>& toKeep) {
    if (!report_calls::collectErrorOrders(call)) {
        return;
    }
    const std::vector<std::string>& errors = call.module().errorOrders;
    store::OrderStore& store = *call.store();
    const std::vector<std::string> finished =
        store::finishedOrders(store, {errors.begin(), errors.end()}, toKeep);
    for (const std::string& order : finished) {
        store::showOrder(store, order, [&](const store::RecordKey& key, xml::Node record) {
            call.keepCopy(key, record, store::RemovedRecords::Reason::Purge);
        });
    }
    call.saveCopies();
    for (const std::string& order : finished) {
        store::removeOrder(store, order);
    }
}

std::string storeFirstDownload(Call& call, const std::string& xml) {
    const std::optional<std::string> encoded = xml::encodedAsDeclared(xml);
    call.files().replace(paths::store, encoded ? *encoded : xml, platform::Durability::Durable);
    call.log({Call::xmlLine(xml)});
    call.clearErrorAtEnd();
    return downloadedMessage;
}

// Writes the log entry of a merge; returns the error text, "" when it went well.
std::string logMerge(Call& call, const store::MergeResult& result, const std::string& xml) {
    std::vector<LogLine> lines;
    for (const std::string& text : result.findings) {
        lines.push_back(Call::errorLine(text));
    }
    std::string error;
    if (result.hasFailed) {
        error = call.failureText("SLBEU0266");
        call.setError(error);
        lines.push_back(Call::errorLine(error));
    }
    lines.push_back(Call::xmlLine(xml));
    call.log(lines);
    return error;
}

std::string mergeDownload(Call& call, const xml::CheckedText& downloaded, const std::string& xml) {
    const store::MergeResult result =
        store::merge(*call.store(), downloaded, *recordCheckFor(call));
    if (std::string error = logMerge(call, result, xml); !error.empty()) {
        return error;
    }
    purgeFinished(call, result.closedOrders);
    call.clearErrorAtEnd();
    return result.tookAnything() ? downloadedMessage : call.failureText("SLBEU0322");
}

// Ends a change that the page asked for: tells what it must, and returns "" or the error text.
std::string conclude(Call& call, const store::ChangeResult& result) {
    std::vector<LogLine> lines;
    for (const std::string& text : result.lookUpFaults) {
        lines.push_back(Call::errorLine(text));
    }
    std::string error;
    if (result.refusal) {
        error = result.refusal->code.empty() ? result.refusal->text
                                             : call.failureText(result.refusal->code);
        call.setError(error);
        lines.push_back(Call::errorLine(error));
    } else {
        call.clearErrorAtEnd();
    }
    if (!lines.empty()) {
        call.log(lines);
    }
    return error;
}

}  // namespace

std::string download(Call& call, const std::string& xml) {
    const std::vector<LogLine> received{Call::xmlLine(xml)};
    if (!isInitialised(call)) {
        return call.fail("SLBEU0264", received);
    }
    const std::optional<xml::CheckedText> downloaded = xml::checked(xml);
    if (!downloaded || downloaded->facts.root != store::rootName) {
        return call.fail("SLBEU0265", received);
    }
    if (!call.files().fileExists(paths::store)) {
        return storeFirstDownload(call, xml);
    }
    if (const auto failure = call.failWithoutStore(received)) {
        return *failure;
    }
    return mergeDownload(call, *downloaded, xml);
}

std::string edit(Call& call, const std::string& xml) {
    const std::optional<xml::Document> edited = xml::Document::parse(xml);
    if (!edited) {
        return call.fail("SLBEU0267");
    }
    if (const auto failure = call.failWithoutStore()) {
        return *failure;
    }
    if (const auto failure = call.failWithoutMapper()) {
        return *failure;
    }
    const store::ChangeResult result =
        store::edit(*call.store(), edited->root(), *recordCheckFor(call));
    if (!result.resent.empty() && call.report() != nullptr) {
        for (const store::RecordKey& key : result.resent) {
            call.report()->removeExact(key);
        }
    }
    return conclude(call, result);
}

std::string add(Call& call, const std::string& xml) {
    if (!isInitialised(call)) {
        return call.fail("SLBEU0268");
    }
    const std::optional<xml::Document> added = xml::Document::parse(xml);
    if (!added) {
        return call.fail("SLBEU0269");
    }
    if (const auto failure = call.failWithoutStore()) {
        return *failure;
    }
    if (const auto failure = call.failWithoutMapper()) {
        return *failure;
    }
    return conclude(call, store::add(*call.store(), added->root(), *recordCheckFor(call)));
}

std::string addHourRegistration(Call& call, const std::string& xml) {
    if (!isInitialised(call)) {
        return call.fail("SLBEU0321");
    }
    const std::optional<xml::Document> added = xml::Document::parse(xml);
    if (!added) {
        return call.fail("SLBEU0265");
    }
    if (const auto failure = call.failWithoutStore()) {
        return *failure;
    }
    const xml::Node line = store::givenHourRegistration(added->root());
    if (!line) {
        return call.fail("SLBEU0265");
    }
    call.store()->appendHourRegistration(line);
    call.clearErrorAtEnd();
    return {};
}

void deleteRecord(Call& call, std::string_view order, std::string_view activity,
                  std::string_view line, std::string_view costType) {
    if (call.failWithoutStore()) {
        return;
    }
    if (const auto key = store::addressed(order, activity, line, costType)) {
        store::remove(*call.store(), *key);
        if (call.report() != nullptr) {
            call.report()->removeBelow(*key);
        }
    }
}

void completeOrders(Call& call) {
    if (call.failWithoutStore()) {
        return;
    }
    store::completeOrders(*call.store());
}

void purge(Call& call) {
    if (call.failWithoutStore()) {
        return;
    }
    purgeFinished(call, {});
}

std::string upload(Call& call) {
    if (!call.files().fileExists(paths::store)) {
        return {};
    }
    completeOrders(call);
    if (call.store() == nullptr) {
        return {};
    }
    store::Upload upload = store::makeUpload(*call.store());
    if (!upload.text.empty()) {
        // The text must be safe before its records are marked as sent: from then on it is the only
        // place that says what was in it.
        call.files().replace(paths::upload, upload.text, platform::Durability::Durable);
        store::markSent(*call.store(), upload);
    }
    return std::move(upload.text);
}

}  // namespace tandril::store_calls
