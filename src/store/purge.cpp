#include "store/purge.h"

#include <utility>

#include "store/remove.h"

namespace tandril::store {
namespace {

bool hasUnsentWork(const OrderStore& store, const std::string& order) {
    bool found = false;
    showOrder(store, order, [&](const RecordKey&, xml::Node record) {
        found = found || isUnsent(stateOf(record));
    });
    return found;
}

bool isFinished(const OrderStore& store, const std::string& order) {
    const std::string status = store.orderStatus(order);
    return status != status::open && (status == status::closed || !hasUnsentWork(store, order));
}

}  // namespace

std::vector<std::string> finishedOrders(const OrderStore& store,
                                        const std::unordered_set<std::string>& withErrors,
                                        const std::unordered_set<std::string>& toKeep) {
    std::vector<std::string> finished;
    for (const xml::Node record : store.candidates(Section::Orders)) {
        std::string order(xml::attribute(record, orderKey));
        const bool isTheOrder = store.order(order) == record;  // and not a later one of its number
        if (isTheOrder && withErrors.count(order) == 0 && toKeep.count(order) == 0 &&
            isFinished(store, order)) {
            finished.push_back(std::move(order));
        }
    }
    return finished;
}

}  // namespace tandril::store
