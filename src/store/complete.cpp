#include "store/complete.h"

#include <algorithm>

namespace tandril::store {
namespace {

bool isReady(xml::Node activityGroup) {
    const xml::Elements activities(activityGroup);
    return xml::hasElements(activityGroup) &&
           std::all_of(activities.begin(), activities.end(),
                       [](xml::Node activity) { return statusOf(activity) == status::completed; });
}

}  // namespace

void completeOrders(OrderStore& store) {
    for (const xml::Node order : store.candidates(Section::Orders)) {
        if (statusOf(order) == status::open &&
            isReady(store.activityGroup(xml::attribute(order, orderKey)))) {
            store.setText(xml::elementAt(order, 0), status::completed);
            store.apply(Event::Completed, order);
        }
    }
}

}  // namespace tandril::store
