#include "platform/random_bytes.h"

#include <windows.h>
// Needs the types of windows.h.
#include <bcrypt.h>

namespace tandril::platform {

bool fillRandom(std::span<unsigned char> bytes) {
    return ::BCryptGenRandom(nullptr, bytes.data(), static_cast<ULONG>(bytes.size()),
                             BCRYPT_USE_SYSTEM_PREFERRED_RNG) == 0;
}

}  // namespace tandril::platform
