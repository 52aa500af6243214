#include "store/upload_report.h"

#include <algorithm>
#include <utility>

#include "platform/fault.h"
#include "store/key_index.h"

namespace tandril::store {
namespace {

constexpr const char* fileElement = "File";
constexpr std::size_t errorOrderSlots = 1001;

std::string_view wordOf(Section section) {
    const CostType* type = costTypeOf(section);
    return type == nullptr ? std::string_view() : type->word;
}

}  // namespace

RecordKey ReportEntry::key() const {
    if (const CostType* type = costTypeWithWord(costType())) {
        return {type->section, std::string(order()), std::string(activity()), std::string(line())};
    }
    if (costType().empty() && !activity().empty()) {
        return {Section::Activities, std::string(order()), std::string(activity())};
    }
    return {Section::Orders, std::string(order())};
}

UploadReport::UploadReport(xml::Document document) : document_(std::move(document)) {}

std::vector<ReportEntry> UploadReport::entries() const {
    std::vector<ReportEntry> found;
    for (const xml::Node file : xml::elements(document_.root())) {
        if (xml::isNamed(file, fileElement)) {
            for (const xml::Node entry : xml::elements(file)) {
                found.push_back({entry});
            }
        }
    }
    return found;
}

std::size_t UploadReport::countErrors() const {
    const std::vector<ReportEntry> all = entries();
    return static_cast<std::size_t>(std::count_if(
        all.begin(), all.end(), [](const ReportEntry& entry) { return entry.isError(); }));
}

UploadReport::Indexed& UploadReport::indexed() const {
    if (indexed_) {
        return *indexed_;
    }
    Indexed& index = indexed_.emplace();
    index.entries = entries();
    std::uint32_t place = 0;
    for (const ReportEntry& entry : index.entries) {
        const std::string_view order = entry.order();
        const std::string_view activity = entry.activity();
        index.byOrder[joinedKey({order})].push_back(place);
        index.byActivity[joinedKey({order, activity})].push_back(place);
        index.byRecord[joinedKey({order, activity, entry.line(), entry.costType()})].push_back(
            place);
        ++place;
    }
    return index;
}

void UploadReport::append(const UploadReport& other) {
    for (const xml::Node file : xml::elements(other.document_.root())) {
        if (xml::isNamed(file, fileElement)) {
            xml::appendCopy(document_.root(), file);
        }
    }
    indexed_.reset();
    isChanged_ = true;
}

void UploadReport::remove(xml::Node element) {
    element.parent().remove_child(element);
    isChanged_ = true;
}

void UploadReport::removeAll(const Index& index, const std::string& key) {
    const auto found = index.find(key);
    if (found == index.end()) {
        return;
    }
    for (const std::uint32_t place : found->second) {
        ReportEntry& entry = indexed().entries[place];
        if (entry.node) {
            remove(entry.node);
            entry.node = {};
        }
    }
}

void UploadReport::removeExact(const RecordKey& key) {
    removeAll(indexed().byRecord,
              joinedKey({key.order, key.activity, key.line, wordOf(key.section)}));
}

void UploadReport::removeBelow(const RecordKey& key) {
    switch (key.section) {
        case Section::Orders:
            removeAll(indexed().byOrder, joinedKey({key.order}));
            break;
        case Section::Activities:
            removeAll(indexed().byActivity, joinedKey({key.order, key.activity}));
            break;
        default:
            removeExact(key);
    }
}

void UploadReport::removeCompleted() {
    indexed_.reset();
    for (const ReportEntry& entry : entries()) {
        if (entry.isCompleted()) {
            remove(entry.node);
        }
    }
    std::vector<xml::Node> empty;
    for (const xml::Node file : xml::elements(document_.root())) {
        if (xml::isNamed(file, fileElement) && !xml::hasElements(file)) {
            empty.push_back(file);
        }
    }
    for (const xml::Node file : empty) {
        remove(file);
    }
}

std::vector<std::string> errorOrders(const UploadReport& report) {
    std::vector<std::string> orders;
    for (const ReportEntry& entry : report.entries()) {
        if (entry.isError()) {
            if (orders.size() == errorOrderSlots) {
                throw Fault("The upload report refuses more than " +
                            std::to_string(errorOrderSlots) + " records");
            }
            orders.emplace_back(entry.order());
        }
    }
    return orders;
}

}  // namespace tandril::store
