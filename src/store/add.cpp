#include "store/add.h"

#include "store/change_document.h"
#include "store/checking.h"

namespace tandril::store {
namespace {

std::string_view existsCode(Section section) {
    switch (section) {
        case Section::Orders:
            return refusal::orderExists;
        case Section::Activities:
            return refusal::activityExists;
        default:
            return refusal::lineExists;
    }
}

xml::Node groupFor(OrderStore& store, const RecordKey& key) {
    xml::Node group = store.group(key);
    if (group) {
        store.apply(GroupEvent::MemberCreated, group);
    } else {
        group = store.appendGroup(key.section, key.order, key.activity);
        store.setAttribute(group, stateAttribute, state::created);
    }
    return group;
}

// Returns whether the record was taken.
bool take(OrderStore& store, const GivenRecord& given, RecordCheck& check, ChangeResult& result) {
    const RecordKey& key = given.key;
    if (store.record(key)) {
        result.refusal = Refusal{existsCode(key.section)};
        return false;
    }
    if (key.section == Section::Orders) {
        if (!passes(store, check, key, given.record, {}, result)) {
            return false;
        }
        store.apply(Event::Created, store.append(Section::Orders, given.record));
    } else {
        store.apply(Event::Created, store.appendTo(groupFor(store, key), given.record));
    }
    return true;
}

}  // namespace

ChangeResult add(OrderStore& store, xml::Node root, RecordCheck& check) {
    return takeAll(store, root, refusal::notAnAddition,
                   [&](const GivenRecord& given, ChangeResult& result) {
                       return take(store, given, check, result);
                   });
}

xml::Node givenHourRegistration(xml::Node root) {
    const xml::Node first = xml::elementAt(root, 0);
    return xml::isNamed(first, sectionName(Section::HourRegistrations)) ? xml::elementAt(first, 0)
                                                                        : first;
}

}  // namespace tandril::store
