#include "store/checking.h"

#include <utility>

namespace tandril::store {

std::vector<CheckFinding> findings(const OrderStore& store, RecordCheck& check,
                                   const RecordKey& key, xml::Node record, xml::Node edit) {
    const std::string activityStatus =
        isCostSection(key.section) ? store.activityStatus(key.order, key.activity) : std::string();
    return check.check({key.section, record, edit, activityStatus});
}

bool passes(const OrderStore& store, RecordCheck& check, const RecordKey& key, xml::Node record,
            xml::Node edit, ChangeResult& result) {
    std::string failures;
    for (CheckFinding& finding : findings(store, check, key, record, edit)) {
        if (finding.kind == CheckFinding::Kind::LookUpFault) {
            result.lookUpFaults.push_back(std::move(finding.text));
        } else {
            failures += failures.empty() ? "" : "; ";
            failures += finding.text;
        }
    }
    if (failures.empty()) {
        return true;
    }
    result.refusal = Refusal{{}, std::move(failures)};
    return false;
}

}  // namespace tandril::store
