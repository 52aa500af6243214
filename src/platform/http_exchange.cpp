#include <algorithm>

#include "platform/ascii.h"
#include "platform/http_exchange.h"

namespace tandril::platform {

std::string_view HttpAnswer::field(std::string_view name) const {
    const std::string wanted = foldAscii(name);
    const auto found = std::ranges::find_if(
        fields, [&wanted](const auto& field) { return foldAscii(field.first) == wanted; });
    return found == fields.end() ? std::string_view() : std::string_view(found->second);
}

}  // namespace tandril::platform
