#include "store/upload.h"

#include <optional>
#include <string_view>
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
        text.reserve(store_.document().textSize());
        xml::write(text, store_.document().root(), leftOut_);
        return text;
    }

    std::vector<xml::Node> records;

  private:
    bool hasActivities(std::string_view order) const {
        return xml::hasElements(store_.activityGroup(order));
    }

    void selectOrder(xml::Node order) {
        const std::string_view number = xml::attribute(order, orderKey);
        if (isToBeSent(stateOf(order)) && hasActivities(number)) {
            records.push_back(store_.order(number));
        } else {
            leftOut_.push_back(order);
        }
    }

    void selectMembers(Section section, xml::Node group) {
        const char* const key = memberKey(section);
        std::optional<xml::Node> first;  // group with these keys
        for (const xml::Node member : xml::elements(group)) {
            if (!isToBeSent(stateOf(member))) {
                leftOut_.push_back(member);
                continue;
            }
            if (!first) {
                first = store_.group(OrderStore::keyOf(section, group));
            }
            records.push_back(store_.member(*first, key, xml::attribute(member, key)));
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
    for (const xml::Node record : upload.records) {
        const xml::Node parent = record.parent();
        if (store.apply(Event::Sent, record) && xml::isNamed(parent, groupElement)) {
            store.apply(GroupEvent::MemberSent, parent);
        }
    }
}

}  // namespace tandril::store
