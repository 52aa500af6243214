#include "store/edit.h"

#include <vector>

#include "store/change_document.h"
#include "store/checking.h"

namespace tandril::store {
namespace {

class Edit {
  public:
    Edit(OrderStore& store, RecordCheck& check, ChangeResult& result)
        : store_(store), check_(check), result_(result) {}

    // Returns whether the record was taken.
    bool take(const GivenRecord& given) {
        const xml::Node stored = store_.record(given.key);
        if (!stored) {
            result_.refusal = Refusal{refusal::notAnEdit};
            return false;
        }
        if (!passes(store_, check_, given.key, stored, given.record, result_)) {
            return false;
        }
        for (const xml::Node field : xml::elements(given.record)) {
            if (const xml::Node own = xml::child(stored, field.name())) {
                store_.setText(own, xml::text(field));
            }
        }
        moveOn(given.key, stored);
        return true;
    }

  private:
    void moveOn(const RecordKey& key, xml::Node stored) {
        const bool wasSent = isSent(stateOf(stored));
        const bool changed = store_.apply(Event::Edited, stored);
        if (changed && stateOf(stored) == state::created && key.section != Section::Orders) {
            store_.apply(GroupEvent::MemberCreated, stored.parent());
        }
        if (wasSent) {
            result_.resent.push_back(key);
            resendDependants(key);
        }
    }

    // What was sent below a provisional number must be sent again with its corrected parent.
    void resendDependants(const RecordKey& key) {
        if (key.section == Section::Orders && isProvisional(key.order)) {
            resend(Section::Activities, store_.groups(Section::Activities, key.order));
            for (const Section section : costSections) {
                resend(section, store_.groups(section, key.order));
            }
        } else if (key.section == Section::Activities &&
                   (isProvisional(key.order) || isProvisional(key.activity))) {
            for (const Section section : costSections) {
                resend(section, store_.groups(section, key.order, key.activity));
            }
        }
    }

    void resend(Section section, const std::vector<xml::Node>& groups) {
        for (const xml::Node group : groups) {
            store_.apply(GroupEvent::Resent, group);
            for (const xml::Node member : xml::elements(group)) {
                if (store_.apply(Event::Resent, member)) {
                    result_.resent.push_back(OrderStore::keyOf(section, group, member));
                }
            }
        }
    }

    OrderStore& store_;
    RecordCheck& check_;
    ChangeResult& result_;
};

}  // namespace

ChangeResult edit(OrderStore& store, xml::Node root, RecordCheck& check) {
    return takeAll(store, root, refusal::notAnEdit,
                   [&](const GivenRecord& given, ChangeResult& result) {
                       return Edit(store, check, result).take(given);
                   });
}

}  // namespace tandril::store
