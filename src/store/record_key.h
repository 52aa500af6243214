#pragma once

#include <string>

#include "store/sections.h"

namespace tandril::store {

// The keys that find a record of the store. Parts that a kind of record does not have are "".
struct RecordKey {
    Section section = Section::Orders;
    std::string order;
    std::string activity = {};
    std::string line = {};

    bool operator==(const RecordKey&) const = default;
};

}  // namespace tandril::store
