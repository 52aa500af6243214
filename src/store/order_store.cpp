#include "store/order_store.h"

#include <utility>

namespace tandril::store {
namespace {

// Members of a group are looked at one by one up to this many; beyond, an index pays off.
constexpr std::size_t fewMembers = 16;

std::string_view orderOf(Section section, xml::Node element) {
    return xml::attribute(element, section == Section::Orders ? orderKey : groupOrderKey);
}

std::string activityKeyOf(xml::Node group) {
    return joinedKey({xml::attribute(group, groupOrderKey), xml::attribute(group, activityKey)});
}

bool isStore(const std::optional<xml::Document>& document) {
    return document && document->name() == rootName;
}

// The key's attribute in the members of a group of the store.
const char* memberKeyOf(xml::Node group) {
    return memberKey(sectionNamed(group.parent().name()).value_or(Section::Material));
}

}  // namespace

std::optional<OrderStore> OrderStore::from(std::optional<xml::Document> document) {
    if (!isStore(document)) {
        return std::nullopt;
    }
    document->root();  // makes it whole
    return OrderStore(std::move(*document));
}

std::unique_ptr<const OrderStore> OrderStore::toRead(std::optional<xml::Document> document) {
    return isStore(document)
               ? std::unique_ptr<const OrderStore>(new OrderStore(std::move(*document)))
               : nullptr;
}

OrderStore::SectionIndex& OrderStore::index(Section section) const {
    SectionIndex& found = indexes_[static_cast<std::size_t>(section)];
    if (!found.isFilled) {
        fill(section);
    }
    return found;
}

// All sections, since the walk is the same, or the one if more are not to be parsed.
void OrderStore::fill(Section section) const {
    const xml::Node tree = document_.treeWith(sectionName(section));
    std::array<SectionIndex*, allSections.size()> toFill{};
    for (const Section place : allSections) {
        SectionIndex& candidate = indexes_[static_cast<std::size_t>(place)];
        if (!candidate.isFilled && (place == section || document_.isWhole())) {
            toFill[static_cast<std::size_t>(place)] = &candidate;
            candidate.isFilled = true;
        }
    }
    const auto at = [&](Section place) { return toFill[static_cast<std::size_t>(place)]; };
    visitBelow(
        tree,
        [&](Section place, xml::Node element) {
            if (at(place) != nullptr) {
                at(place)->elements.push_back(element);
            }
        },
        [&](Section place, xml::Node candidate) {
            if (at(place) != nullptr) {
                at(place)->candidates.push_back(candidate);
            }
        });
}

template <class KeyOf>
KeyIndex& OrderStore::built(std::optional<KeyIndex>& keys, const std::vector<xml::Node>& candidates,
                            const KeyOf& keyOf) {
    if (!keys) {
        keys.emplace().reserve(candidates.size());
        for (const xml::Node candidate : candidates) {
            keys->add(keyOf(candidate), candidate);
        }
    }
    return *keys;
}

KeyIndex& OrderStore::byOrder(Section section) const {
    SectionIndex& found = index(section);
    return built(found.byOrder, found.candidates,
                 [section](xml::Node candidate) { return orderOf(section, candidate); });
}

KeyIndex& OrderStore::byActivity(Section section) const {
    SectionIndex& found = index(section);
    return built(found.byActivity, found.candidates, activityKeyOf);
}

void OrderStore::addToIndex(Section section, xml::Node candidate) {
    SectionIndex& found = index(section);
    found.candidates.push_back(candidate);
    if (found.byOrder) {
        found.byOrder->add(orderOf(section, candidate), candidate);
    }
    if (found.byActivity) {
        found.byActivity->add(activityKeyOf(candidate), candidate);
    }
}

xml::Node OrderStore::section(Section section) const {
    const char* const name = sectionName(section);
    return xml::firstElement(document_.treeWith(name), name);
}

std::vector<xml::Node> OrderStore::candidates(Section section) const {
    return candidatesBelow(document_.treeWith(sectionName(section)), section);
}

RecordKey OrderStore::keyOf(Section section, xml::Node candidate) {
    RecordKey key{section, std::string(orderOf(section, candidate))};
    if (isCostSection(section)) {
        key.activity = xml::attribute(candidate, activityKey);
    }
    return key;
}

RecordKey OrderStore::keyOf(Section section, xml::Node group, xml::Node member) {
    RecordKey key = keyOf(section, group);
    const bool isActivity = section == Section::Activities;
    (isActivity ? key.activity : key.line) = xml::attribute(member, memberKey(section));
    return key;
}

xml::Node OrderStore::order(std::string_view order) const {
    return byOrder(Section::Orders).first(order);
}

xml::Node OrderStore::activityGroup(std::string_view order) const {
    return byOrder(Section::Activities).first(order);
}

xml::Node OrderStore::activity(std::string_view order, std::string_view activity) const {
    return member(activityGroup(order), memberKey(Section::Activities), activity);
}

xml::Node OrderStore::costGroup(Section section, std::string_view order,
                                std::string_view activity) const {
    return byActivity(section).first(joinedKey({order, activity}));
}

xml::Node OrderStore::line(Section section, std::string_view order, std::string_view activity,
                           std::string_view line) const {
    return member(costGroup(section, order, activity), memberKey(section), line);
}

xml::Node OrderStore::group(const RecordKey& key) const {
    return isCostSection(key.section) ? costGroup(key.section, key.order, key.activity)
                                      : activityGroup(key.order);
}

xml::Node OrderStore::record(const RecordKey& key) const {
    switch (key.section) {
        case Section::Orders:
            return order(key.order);
        case Section::Activities:
            return activity(key.order, key.activity);
        default:
            return line(key.section, key.order, key.activity, key.line);
    }
}

xml::Node OrderStore::member(xml::Node group, const char* key, std::string_view value) const {
    std::size_t seen = 0;
    for (const xml::Node element : xml::elements(group)) {
        if (++seen > fewMembers) {
            return manyMembers(group, key, value);
        }
        if (xml::attribute(element, key) == value) {
            return element;
        }
    }
    return {};
}

xml::Node OrderStore::manyMembers(xml::Node group, const char* key, std::string_view value) const {
    const auto [found, isNew] = members_.try_emplace(group.hash_value());
    if (isNew) {
        for (const xml::Node element : xml::elements(group)) {
            found->second.add(xml::attribute(element, key), element);
        }
    }
    return found->second.first(value);
}

std::vector<xml::Node> OrderStore::groups(Section section, std::string_view order) const {
    return byOrder(section).all(order);
}

std::vector<xml::Node> OrderStore::groups(Section section, std::string_view order,
                                          std::string_view activity) const {
    return byActivity(section).all(joinedKey({order, activity}));
}

std::string OrderStore::orderStatus(std::string_view order) const {
    return statusOf(this->order(order));
}

std::string OrderStore::activityStatus(std::string_view order, std::string_view activity) const {
    return statusOf(this->activity(order, activity));
}

xml::Node OrderStore::append(Section section, xml::Node element) {
    return added(section, xml::appendCopy(insertionParent(section), element));
}

xml::Node OrderStore::take(Section section, xml::Node element) {
    return added(section, xml::appendMoved(insertionParent(section), element));
}

xml::Node OrderStore::added(Section section, xml::Node candidate) {
    if (isCandidate(section, candidate)) {
        addToIndex(section, candidate);
    }
    noteAddition(candidate);
    return candidate;
}

void OrderStore::noteAddition(xml::Node added) {
    isChanged_ = true;
    if (undo_) {
        undo_->keepAddition(added);
    }
}

xml::Node OrderStore::appendGroup(Section section, std::string_view order,
                                  std::string_view activity) {
    pugi::xml_document scratch;
    xml::Node group = scratch.append_child(groupElement);
    xml::setAttribute(group, groupOrderKey, order);
    if (isCostSection(section)) {
        xml::setAttribute(group, activityKey, activity);
    }
    return append(section, group);
}

xml::Node OrderStore::appendTo(xml::Node group, xml::Node member) {
    return addedTo(group, xml::appendCopy(group, member));
}

xml::Node OrderStore::takeInto(xml::Node group, xml::Node member) {
    return addedTo(group, xml::appendMoved(group, member));
}

xml::Node OrderStore::addedTo(xml::Node group, xml::Node member) {
    const auto many = members_.find(group.hash_value());
    if (many != members_.end()) {
        many->second.add(xml::attribute(member, memberKeyOf(group)), member);
    }
    noteAddition(member);
    return member;
}

xml::Node OrderStore::appendHourRegistration(xml::Node line) {
    xml::Node parent = section(Section::HourRegistrations);
    if (!parent) {
        parent = createSection(Section::HourRegistrations);
    }
    const xml::Node copy = xml::appendCopy(parent, line);
    noteAddition(copy);
    return copy;
}

void OrderStore::remove(Section section, xml::Node element) {
    byOrder(section).remove(orderOf(section, element), element);
    if (isCostSection(section)) {
        byActivity(section).remove(activityKeyOf(element), element);
    }
    // Every index that this section has is built: nobody needs them any more.
    index(section).candidates.clear();
    members_.erase(element.hash_value());
    element.parent().remove_child(element);
    isChanged_ = true;
}

void OrderStore::removeMember(xml::Node member) {
    xml::Node group = member.parent();
    const auto many = members_.find(group.hash_value());
    if (many != members_.end()) {
        many->second.remove(xml::attribute(member, memberKeyOf(group)), member);
    }
    group.remove_child(member);
    isChanged_ = true;
}

bool OrderStore::setText(xml::Node element, std::string_view value) {
    if (undo_) {
        undo_->keepContent(element);
    }
    const bool changed = xml::setText(element, value);
    isChanged_ = isChanged_ || changed;
    return changed;
}

bool OrderStore::setAttribute(xml::Node element, const char* name, std::string_view value) {
    if (undo_) {
        undo_->keepAttribute(element, name);
    }
    const bool changed = xml::setAttribute(element, name, value);
    isChanged_ = isChanged_ || changed;
    return changed;
}

bool OrderStore::apply(Event event, xml::Node record) {
    const std::string_view before = stateOf(record);
    const std::string_view after = stateAfter(event, before);
    return after != before && setAttribute(record, stateAttribute, after);
}

bool OrderStore::apply(GroupEvent event, xml::Node group) {
    const std::string_view before = stateOf(group);
    const std::string_view after = stateAfter(event, before);
    return after != before && setAttribute(group, stateAttribute, after);
}

void OrderStore::begin() {
    undo_ = std::make_unique<UndoLog>();
    wasChanged_ = isChanged_;
}

void OrderStore::keep() {
    undo_.reset();
}

void OrderStore::takeBack() {
    if (!undo_) {
        return;
    }
    undo_->takeBack();
    undo_.reset();
    isChanged_ = wasChanged_;
    // What was added since is in the indexes; the next look-up builds them anew.
    indexes_ = {};
    members_.clear();
}

xml::Node OrderStore::insertionParent(Section section) {
    for (const xml::Node element : index(section).elements) {
        if (xml::isNamed(element.parent(), rootName)) {
            return element;
        }
    }
    return createSection(section);
}

xml::Node OrderStore::createSection(Section section) {
    SectionIndex& sectionIndex = index(section);
    const xml::Node created = document_.root().append_child(sectionName(section));
    sectionIndex.elements.push_back(created);
    noteAddition(created);
    return created;
}

bool isCostSection(Section section) {
    return costTypeOf(section) != nullptr;
}

std::string statusOf(xml::Node record) {
    return xml::text(xml::elementAt(record, 0));
}

std::string_view stateOf(xml::Node record) {
    return xml::attribute(record, stateAttribute);
}

}  // namespace tandril::store
