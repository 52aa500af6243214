#include "store/key_index.h"

namespace tandril::store {

std::string joinedKey(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (const std::string_view part : parts) {
        size += part.size() + 1;
    }
    std::string key;
    key.reserve(size);
    for (const std::string_view part : parts) {
        key += part;
        key += '\0';
    }
    return key;
}

void KeyIndex::add(std::string_view key, xml::Node node) {
    const auto place = static_cast<std::uint32_t>(entries_.size());
    entries_.push_back({node, none});
    const auto [found, isNew] = chains_.try_emplace(std::string(key), Chain{place, place});
    if (!isNew) {
        entries_[found->second.tail].next = place;
        found->second.tail = place;
    }
}

xml::Node KeyIndex::first(std::string_view key) const {
    const auto found = chains_.find(key);
    return found == chains_.end() ? xml::Node() : entries_[found->second.head].node;
}

std::vector<xml::Node> KeyIndex::all(std::string_view key) const {
    std::vector<xml::Node> nodes;
    const auto found = chains_.find(key);
    if (found != chains_.end()) {
        for (std::uint32_t at = found->second.head; at != none; at = entries_[at].next) {
            nodes.push_back(entries_[at].node);
        }
    }
    return nodes;
}

void KeyIndex::remove(std::string_view key, xml::Node node) {
    const auto found = chains_.find(key);
    if (found == chains_.end()) {
        return;
    }
    Chain& chain = found->second;
    std::uint32_t before = none;
    std::uint32_t at = chain.head;
    while (at != none && entries_[at].node != node) {
        before = at;
        at = entries_[at].next;
    }
    if (at == none) {
        return;
    }
    const std::uint32_t next = entries_[at].next;
    if (before == none && next == none) {
        chains_.erase(found);
        return;
    }
    (before == none ? chain.head : entries_[before].next) = next;
    if (next == none) {
        chain.tail = before;
    }
}

}  // namespace tandril::store
