#include "store/removed_records.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "xml/writer.h"

namespace tandril::store {
namespace {

constexpr std::size_t pieceSize = std::size_t{64} * 1024;

std::size_t number(std::string_view text) {
    std::size_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string_view word(RemovedRecords::Reason reason) {
    return reason == RemovedRecords::Reason::Report ? "report" : "purge";
}

}  // namespace

RemovedRecords::RemovedRecords() : RemovedRecords(*xml::Document::parse("<Removed/>")) {}

RemovedRecords::RemovedRecords(xml::Document document) : document_(std::move(document)) {
    for (const xml::Node entry : xml::elements(document_.root())) {
        lastId_ = std::max(lastId_, number(xml::attribute(entry, "ID")));
    }
}

void RemovedRecords::add(const RecordKey& key, xml::Node record, Reason reason,
                         std::string_view time) {
    if (added_.empty() || added_.back().size() >= pieceSize) {
        added_.emplace_back();
    }
    std::string& piece = added_.back();
    piece += "<Entry";
    xml::writeAttribute(piece, "ID", std::to_string(++lastId_));
    xml::writeAttribute(piece, "Time", time);
    xml::writeAttribute(piece, "Reason", word(reason));
    xml::writeAttribute(piece, "Section", sectionName(key.section));
    xml::writeAttribute(piece, "Order", key.order);
    xml::writeAttribute(piece, "Activity", key.activity);
    xml::writeAttribute(piece, "CostLine", key.line);
    if (key.section != Section::Orders) {
        xml::writeAttribute(piece, "GroupState", stateOf(record.parent()));
    }
    piece += '>';
    xml::write(piece, record);
    piece += "</Entry>";
    isChanged_ = true;
}

std::vector<RemovedRecords::Entry> RemovedRecords::entries() const {
    std::vector<Entry> found;
    for (const xml::Node entry : xml::elements(document_.root())) {
        const auto section = sectionNamed(xml::attribute(entry, "Section"));
        const xml::Node record = xml::elementAt(entry, 0);
        if (section && record) {
            found.push_back({std::string(xml::attribute(entry, "ID")),
                             std::string(xml::attribute(entry, "Time")),
                             std::string(xml::attribute(entry, "Reason")),
                             {*section, std::string(xml::attribute(entry, "Order")),
                              std::string(xml::attribute(entry, "Activity")),
                              std::string(xml::attribute(entry, "CostLine"))},
                             std::string(xml::attribute(entry, "GroupState")),
                             record});
        }
    }
    return found;
}

void RemovedRecords::remove(const Entry& entry) {
    document_.root().remove_child(entry.record.parent());
    isChanged_ = true;
}

bool restore(OrderStore& store, const RemovedRecords::Entry& entry) {
    if (store.record(entry.key)) {
        return false;
    }
    if (entry.key.section == Section::Orders) {
        store.append(Section::Orders, entry.record);
        return true;
    }
    xml::Node group = store.group(entry.key);
    if (!group) {
        group = store.appendGroup(entry.key.section, entry.key.order, entry.key.activity);
        if (!entry.groupState.empty()) {
            store.setAttribute(group, stateAttribute, entry.groupState);
        }
    }
    store.appendTo(group, entry.record);
    return true;
}

void markUnsent(OrderStore& store, const RecordKey& key) {
    const xml::Node record = store.record(key);
    if (isSent(stateOf(record)) && store.apply(Event::Edited, record) &&
        stateOf(record) == state::created && key.section != Section::Orders) {
        store.apply(GroupEvent::MemberCreated, record.parent());
    }
}

}  // namespace tandril::store
