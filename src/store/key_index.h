#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "xml/node.h"

namespace tandril::store {

// One key of several parts, joined by the one character that no document can hold.
std::string joinedKey(std::initializer_list<std::string_view> parts);

// Finds elements by a text key. Elements of the same key keep the order in which they were added;
// the first one is the one that counts until it is removed. Every operation takes constant time,
// apart from walking elements of the same key.
class KeyIndex {
  public:
    // Makes room for so many elements at once.
    void reserve(std::size_t elements);
    void add(std::string_view key, xml::Node node);

    // The first element of that key; null when there is none.
    xml::Node first(std::string_view key) const;
    // All elements of that key, in order.
    std::vector<xml::Node> all(std::string_view key) const;

    // Forgets the element. It must have been added under that key.
    void remove(std::string_view key, xml::Node node);

  private:
    static constexpr std::uint32_t none = UINT32_MAX;

    // Elements of one key form a chain; the first of them stands in the table. It stays there
    // without a node when all of them are removed.
    struct Entry {
        xml::Node node;
        std::size_t keyStart;
        std::uint32_t keySize;
        std::uint32_t hash;
        std::uint32_t next;
        std::uint32_t tail;  // of the chain, in its first entry
    };

    std::string_view keyOf(const Entry& entry) const {
        return std::string_view(keys_).substr(entry.keyStart, entry.keySize);
    }
    // Where the key's chain stands in the table, or would stand. There must be a table.
    std::size_t slot(std::string_view key, std::uint32_t hash) const;
    // The first entry of the key's chain, which may be without a node.
    std::uint32_t head(std::string_view key) const;
    void resizeTable(std::size_t size);

    // Few and large pieces of memory: an index of a large store is read in no order, and each piece
    // more that a look-up touches is one more wait for the memory.
    std::string keys_;
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> table_;  // open addressing; its size is a power of two
    std::size_t chains_ = 0;
};

}  // namespace tandril::store
