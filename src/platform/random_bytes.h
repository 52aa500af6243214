#pragma once

#include <span>

namespace tandril::platform {

// Fills the bytes with random numbers that nobody can guess. Returns false when the system has
// none.
[[nodiscard]] bool fillRandom(std::span<unsigned char> bytes);

}  // namespace tandril::platform
