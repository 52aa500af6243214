#pragma once

#include <string>

#include "enterprise/memory.h"

namespace tandril::enterprise {

// The order download as the office knows things now: open and closed orders under their real
// numbers, open orders with the activities that are still to be done, every record unchanged
// ("O"). Left out are lines under provisional numbers, which the engineer's computer has itself,
// and lines whose last change was refused, so that the engineer's text stays to be corrected.
std::string buildDownload(const Memory& memory);

}  // namespace tandril::enterprise
