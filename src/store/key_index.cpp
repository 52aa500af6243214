#include "store/key_index.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <utility>

namespace tandril::store {
namespace {

constexpr std::size_t smallestTable = 16;

std::uint32_t hashOf(std::string_view key) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(key));
}

}  // namespace

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

std::size_t KeyIndex::slot(std::string_view key, std::uint32_t hash) const {
    const std::size_t mask = table_.size() - 1;
    std::size_t at = hash & mask;
    while (table_[at] != none) {
        const Entry& entry = entries_[table_[at]];
        if (entry.hash == hash && keyOf(entry) == key) {
            break;
        }
        at = (at + 1) & mask;
    }
    return at;
}

std::uint32_t KeyIndex::head(std::string_view key) const {
    return table_.empty() ? none : table_[slot(key, hashOf(key))];
}

void KeyIndex::reserve(std::size_t elements) {
    entries_.reserve(elements);
    const std::size_t size = std::max(smallestTable, std::bit_ceil(elements * 2));
    if (size > table_.size()) {
        resizeTable(size);
    }
}

void KeyIndex::resizeTable(std::size_t size) {
    std::vector<std::uint32_t> old = std::move(table_);
    table_.assign(size, none);
    const std::size_t mask = table_.size() - 1;
    for (const std::uint32_t first : old) {
        if (first != none) {
            std::size_t at = entries_[first].hash & mask;
            while (table_[at] != none) {
                at = (at + 1) & mask;
            }
            table_[at] = first;
        }
    }
}

void KeyIndex::add(std::string_view key, xml::Node node) {
    if (chains_ * 2 >= table_.size()) {
        resizeTable(std::max(smallestTable, table_.size() * 2));
    }
    const std::uint32_t hash = hashOf(key);
    const std::size_t at = slot(key, hash);
    const auto place = static_cast<std::uint32_t>(entries_.size());
    if (table_[at] == none) {
        entries_.push_back(
            {node, keys_.size(), static_cast<std::uint32_t>(key.size()), hash, none, place});
        keys_ += key;
        table_[at] = place;
        ++chains_;
        return;
    }
    Entry& first = entries_[table_[at]];
    if (!first.node) {
        first.node = node;
        return;
    }
    entries_[first.tail].next = place;
    first.tail = place;
    entries_.push_back({node, first.keyStart, first.keySize, hash, none, place});
}

xml::Node KeyIndex::first(std::string_view key) const {
    const std::uint32_t first = head(key);
    return first == none ? xml::Node() : entries_[first].node;
}

std::vector<xml::Node> KeyIndex::all(std::string_view key) const {
    std::vector<xml::Node> nodes;
    for (std::uint32_t at = head(key); at != none; at = entries_[at].next) {
        if (entries_[at].node) {
            nodes.push_back(entries_[at].node);
        }
    }
    return nodes;
}

void KeyIndex::remove(std::string_view key, xml::Node node) {
    const std::uint32_t first = head(key);
    std::uint32_t before = none;
    std::uint32_t at = first;
    while (at != none && entries_[at].node != node) {
        before = at;
        at = entries_[at].next;
    }
    if (at == none) {
        return;
    }
    const std::uint32_t next = entries_[at].next;
    if (before != none) {
        entries_[before].next = next;
        if (next == none) {
            entries_[first].tail = before;
        }
    } else if (next == none) {
        entries_[at].node = xml::Node();
    } else {
        entries_[next].tail = entries_[at].tail;
        table_[slot(key, entries_[at].hash)] = next;
    }
}

}  // namespace tandril::store
