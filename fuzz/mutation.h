#pragma once

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace tandril::fuzz {

// The words of some documents: what an element, a text or an attribute is called or holds there.
struct Vocabulary {
    std::vector<std::string> names;
    std::vector<std::string> values;

    static Vocabulary of(const std::vector<std::string>& documents);
};

// Changes a document at its tags, attributes and texts: elements are repeated, moved, dropped,
// renamed, values are set to words of the vocabulary. The text need not be well-formed; most
// changes keep one that is so.
std::string mutate(std::string_view text, const Vocabulary& words, std::minstd_rand& random);

}  // namespace tandril::fuzz
