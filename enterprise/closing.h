#pragma once

#include <string>

#include "enterprise/memory.h"

namespace tandril::enterprise {

// Closes the least urgent and latest of the open orders that the engineer has not touched, on the
// customer's wish, as long as some others stay open. `stamp` is the time of closing.
void closeAnOrder(Memory& memory, const std::string& stamp);

// Notes that a download tells of every closed order. Returns whether there was one that it had not
// told of yet.
bool markClosingsHeard(Memory& memory);

}  // namespace tandril::enterprise
