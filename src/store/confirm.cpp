#include "store/confirm.h"

#include <string>
#include <unordered_set>
#include <utility>

#include "store/key_index.h"

namespace tandril::store {
namespace {

// A record that was new all along counts as well: it is to be sent, and a group that passes for
// sent would hide it from the lists of what waits.
void resetState(OrderStore& store, const RecordKey& key) {
    const xml::Node record = store.record(key);
    if (!record) {
        return;
    }
    store.apply(Event::Confirmed, record);
    if (key.section != Section::Orders && stateOf(record) == state::created) {
        store.apply(GroupEvent::MemberCreated, record.parent());
    }
}

// What the server has refused something of.
class Refused {
  public:
    explicit Refused(const UploadReport& report) {
        for (const ReportEntry& entry : report.entries()) {
            if (entry.isError()) {
                orders_.emplace(entry.order());
                activities_.insert(joinedKey({entry.order(), entry.activity()}));
            }
        }
    }

    bool holds(const std::string& order) const { return orders_.count(order) != 0; }
    bool holds(std::string_view order, std::string_view activity) const {
        return activities_.count(joinedKey({order, activity})) != 0;
    }

  private:
    std::unordered_set<std::string> orders_;
    std::unordered_set<std::string> activities_;
};

void confirm(OrderStore& store, const ReportEntry& entry, const Refused& refused,
             const Witness& leaving) {
    const RecordKey key = entry.key();
    if (isOrderRemovable(key.order, store.orderStatus(key.order))) {
        if (!refused.holds(key.order)) {
            showOrder(store, key.order, leaving);
            removeOrder(store, key.order);
            return;
        }
    } else if (key.section != Section::Orders &&
               isActivityRemovable(key.order, key.activity,
                                   store.activityStatus(key.order, key.activity)) &&
               !refused.holds(key.order, key.activity)) {
        showActivity(store, key.order, key.activity, leaving);
        removeActivity(store, key.order, key.activity, EmptyGroup::Goes);
        return;
    }
    resetState(store, key);
}

}  // namespace

void applyConfirmations(OrderStore& store, UploadReport& report, const Witness& leaving) {
    const Refused refused(report);
    for (const ReportEntry& entry : report.entries()) {
        if (entry.isCompleted()) {
            confirm(store, entry, refused, leaving);
        }
    }
    report.removeCompleted();
}

}  // namespace tandril::store
