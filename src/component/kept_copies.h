#pragma once

#include <string>
#include <vector>

#include "component/module.h"
#include "store/record_key.h"

// The copies of records that an upload report or the purge took out of the store, for those who
// look after an engineer's data. The page does not know of them.
namespace tandril::kept_copies {

struct Copy {
    std::string id;
    std::string time;
    std::string reason;
    store::RecordKey key;
    std::string state;
};

// All copies, the oldest first. Throws Fault when their file is damaged, here and below.
std::vector<Copy> list(Module& module);

// How a record comes back: with its change state as it was, or as one that is to be sent.
enum class As { ItWas, Unsent };

struct Restored {
    std::vector<std::string> restored;  // ids; their copies are gone
    std::vector<std::string> existing;  // ids whose record the store has; nothing was done to them
    std::vector<std::string> unknown;   // ids of no copy; nothing at all is done when there is one
};

// Puts the copies with these ids back into the store. Throws Fault when the store cannot be loaded.
Restored restore(Module& module, const std::vector<std::string>& ids, As as);

}  // namespace tandril::kept_copies
