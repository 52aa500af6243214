#include "component/list_calls.h"

namespace tandril::lists {
namespace {

// Some lists look at the error text after each step and go on only when it says that there was no
// error; without the setting they never show anything.
enum class Checks { None, ErrorText };

bool mayGoOn(Call& call, Checks checks) {
    return checks == Checks::None || call.error() == "1";
}

// Loads what every list reads. Returns whether the list can be built; the failure is told then.
bool loadDocuments(Call& call, Checks checks) {
    return !call.failWithoutStoreToRead() && mayGoOn(call, checks) && !call.failWithoutMapper() &&
           mayGoOn(call, checks);
}

Checks checksOf(views::RecordList list) {
    switch (list) {
        case views::RecordList::Orders:
        case views::RecordList::WorkingOrders:
        case views::RecordList::SentOrders:
            return Checks::ErrorText;
        default:
            return Checks::None;
    }
}

// The two filtered order lists log an empty list under a name of their own.
void setActionOfEmptyList(Call& call, views::RecordList list) {
    if (list == views::RecordList::WorkingOrders || list == views::RecordList::SentOrders) {
        call.setAction("View Orders");
    }
}

bool isKnownMode(Call& call) {
    const std::string mode = call.settings().mode();
    if (mode == "Online" || mode == "Offline") {
        return true;
    }
    call.fail("SLBEU0300", {{" Mode =   ", mode}});
    return false;
}

std::string orEmptyMessage(Call& call, std::string list) {
    if (list.empty()) {
        call.fail("SLBEU0301");
    }
    return list;
}

}  // namespace

std::string records(Call& call, views::RecordList list) {
    if (!loadDocuments(call, checksOf(list))) {
        return {};
    }
    std::string html = views::recordList(list, *call.storeToRead(), *call.mapper());
    if (html.empty()) {
        setActionOfEmptyList(call, list);
        call.fail(views::emptyMessage(list));
    }
    return html;
}

std::string costLines(Call& call, views::Lines lines, std::string_view costType,
                      std::string_view order, std::string_view activity) {
    if (!isKnownMode(call) || !loadDocuments(call, Checks::ErrorText)) {
        return {};
    }
    return orEmptyMessage(call, views::costLineList(lines, costType, order, activity,
                                                    *call.storeToRead(), *call.mapper()));
}

std::string hourRegistrations(Call& call, views::Lines lines) {
    if (!isKnownMode(call) || !loadDocuments(call, Checks::ErrorText)) {
        return {};
    }
    return orEmptyMessage(call,
                          views::hourRegistrationList(lines, *call.storeToRead(), *call.mapper()));
}

std::string activityCostLines(Call& call, std::string_view digit, std::string_view order,
                              std::string_view activity) {
    // The store is the one in memory: this list belongs to the panel that the call before it built.
    const mapper::FieldMapper* mapper = call.mapper();
    const mapper::FieldMapper blank = mapper::FieldMapper::blank();
    return views::activityCostLines(digit, order, activity, call.settings().mode() == "Offline",
                                    call.module().lastStore.get(),
                                    mapper != nullptr ? *mapper : blank);
}

std::string costLinesHeader(Call& call, std::string_view order, std::string_view activity) {
    return views::costLinesHeader(order, activity,
                                  [&](std::string_view code) { return call.label(code); });
}

}  // namespace tandril::lists
