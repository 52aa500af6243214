#include "component/report_calls.h"

#include <utility>

#include "component/paths.h"
#include "store/confirm.h"
#include "views/error_lists.h"

namespace tandril::report_calls {
namespace {

constexpr std::string_view reportNotValid = "SLBEU0288";
constexpr std::string_view reportNotLoadable = "SLBEU0289";

// The report for a view; null, and the failure told, when there is none that loads.
const store::UploadReport* reportToShow(Call& call) {
    if (!call.hasReport()) {
        return nullptr;
    }
    if (call.report() == nullptr) {
        call.fail(reportNotLoadable);
    }
    return call.report();
}

mapper::Labels labelsOf(Call& call) {
    return [&call](std::string_view code) { return call.label(code); };
}

// Makes the received report part of the stored one. Returns whether it could be.
bool keep(Call& call, xml::Document received, const std::string& xml) {
    if (!call.hasReport()) {
        call.adoptReport(std::move(received), xml);
        return true;
    }
    if (call.report() == nullptr) {
        // The next report starts a new file; the damaged one stays at hand.
        call.files().rename(paths::report, paths::damagedReport);
        return false;
    }
    call.report()->append(store::UploadReport(std::move(received)));
    return true;
}

}  // namespace

std::string take(Call& call, const std::string& xml) {
    std::optional<xml::Document> received = xml::Document::parse(xml);
    if (!received) {
        return call.fail(reportNotValid);
    }
    if (!keep(call, std::move(*received), xml)) {
        return call.fail(reportNotLoadable);
    }
    if (call.store() == nullptr) {
        // The report waits for a store, and is safe before the caller hears that there is none.
        call.save();
    }
    if (const auto failure = call.failWithoutStore()) {
        return *failure;
    }
    store::applyConfirmations(*call.store(), *call.report(),
                              [&](const store::RecordKey& key, xml::Node record) {
                                  call.keepCopy(key, record, store::RemovedRecords::Reason::Report);
                              });
    call.clearErrorAtEnd();
    return {};
}

std::string errorPool(Call& call) {
    const store::UploadReport* report = reportToShow(call);
    return report == nullptr ? std::string()
                             : views::errorPool(report->countErrors(), labelsOf(call));
}

std::string errorList(Call& call) {
    const store::UploadReport* report = reportToShow(call);
    return report == nullptr ? std::string() : views::errorList(*report, labelsOf(call));
}

bool collectErrorOrders(Call& call) {
    std::vector<std::string>& orders = call.module().errorOrders;
    orders.clear();
    if (!call.hasReport()) {
        return true;
    }
    if (call.report() == nullptr) {
        return false;
    }
    orders = store::errorOrders(*call.report());
    return true;
}

}  // namespace tandril::report_calls
