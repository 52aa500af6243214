#include "store/upload.h"

#include <utility>
#include <vector>

#include "xml/writer.h"

namespace tandril::store {
namespace {

class Selection {
  public:
    explicit Selection(const OrderStore& store) : store_(store) {
        for (const Candidate& candidate : candidatesBelow(store.document().root())) {
            if (candidate.section == Section::Orders) {
                selectOrder(candidate.element);
            } else if (candidate.section != Section::HourRegistrations) {
                selectMembers(candidate.section, candidate.element);
            }
        }
    }

    std::string text() const {
        std::string text;
        xml::write(text, store_.document().root(), leftOut_);
        return text;
    }

    std::vector<RecordKey> records;

  private:
    bool hasActivities(xml::Node order) const {
        return xml::hasElements(store_.activityGroup(xml::attribute(order, orderKey)));
    }

    void selectOrder(xml::Node order) {
        if (isToBeSent(stateOf(order)) && hasActivities(order)) {
            records.push_back(OrderStore::keyOf(Section::Orders, order));
        } else {
            leftOut_.push_back(order);
        }
    }

    void selectMembers(Section section, xml::Node group) {
        for (const xml::Node member : xml::elements(group)) {
            if (isToBeSent(stateOf(member))) {
                records.push_back(OrderStore::keyOf(section, group, member));
            } else {
                leftOut_.push_back(member);
            }
        }
    }

    const OrderStore& store_;
    std::vector<xml::Node> leftOut_;  // in document order
};

}  // namespace

Upload makeUpload(const OrderStore& store) {
    Selection selection(store);
    if (selection.records.empty()) {
        return {};
    }
    return {selection.text(), std::move(selection.records)};
}

void markSent(OrderStore& store, const Upload& upload) {
    for (const RecordKey& key : upload.records) {
        const xml::Node record = store.record(key);
        if (store.apply(Event::Sent, record) && key.section != Section::Orders) {
            store.apply(GroupEvent::MemberSent, record.parent());
        }
    }
}

}  // namespace tandril::store
