#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tandril::mapper {

// The text of a message code, "" for an unknown one.
using Labels = std::function<std::string(std::string_view code)>;

}  // namespace tandril::mapper
