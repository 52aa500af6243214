#include "platform/random_bytes.h"

#include <sys/random.h>
#include <sys/types.h>

#include <cerrno>

namespace tandril::platform {

bool fillRandom(std::span<unsigned char> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::getrandom(bytes.data(), bytes.size(), 0);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace tandril::platform
