#include "store/upload.h"

#include <array>
#include <unordered_set>
#include <utility>

#include "xml/writer.h"

namespace tandril::store {
namespace {

constexpr std::array groupSections{Section::Activities, Section::Material, Section::Labour,
                                   Section::Other};

class Selection {
  public:
    explicit Selection(const OrderStore& store) : store_(store) {
        for (const xml::Node order : store.candidates(Section::Orders)) {
            select(OrderStore::keyOf(Section::Orders, order), order,
                   isToBeSent(stateOf(order)) && hasActivities(order));
        }
        for (const Section section : groupSections) {
            for (const xml::Node group : store.candidates(section)) {
                for (const xml::Node member : xml::elements(group)) {
                    select(OrderStore::keyOf(section, group, member), member,
                           isToBeSent(stateOf(member)));
                }
            }
        }
    }

    std::string text() const {
        std::string text;
        xml::write(text, store_.document().root(),
                   [this](xml::Node node) { return left_.count(node.hash_value()) != 0; });
        return text;
    }

    std::vector<RecordKey> records;

  private:
    bool hasActivities(xml::Node order) const {
        return xml::hasElements(store_.activityGroup(xml::attribute(order, orderKey)));
    }

    void select(RecordKey key, xml::Node record, bool isIncluded) {
        if (isIncluded) {
            records.push_back(std::move(key));
        } else {
            left_.insert(record.hash_value());
        }
    }

    const OrderStore& store_;
    std::unordered_set<std::size_t> left_;
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
