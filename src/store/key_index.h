#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
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
    void add(std::string_view key, xml::Node node);

    // The first element of that key; null when there is none.
    xml::Node first(std::string_view key) const;
    // All elements of that key, in order.
    std::vector<xml::Node> all(std::string_view key) const;

    // Forgets the element. It must have been added under that key.
    void remove(std::string_view key, xml::Node node);

  private:
    static constexpr std::uint32_t none = UINT32_MAX;

    struct Entry {
        xml::Node node;
        std::uint32_t next;
    };
    struct Chain {
        std::uint32_t head;
        std::uint32_t tail;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const {
            return std::hash<std::string_view>()(key);
        }
    };

    std::vector<Entry> entries_;
    std::unordered_map<std::string, Chain, Hash, std::equal_to<>> chains_;
};

}  // namespace tandril::store
