#include "host/enterprise_url.h"

#include <algorithm>

#include "platform/fault.h"

namespace tandril::host {
namespace {

bool isPlain(char c) {
    constexpr std::string_view others = "\\?#@\"<>^`{|}";
    return c > ' ' && c < 0x7F && others.find(c) == std::string_view::npos;
}

std::size_t schemeLength(std::string_view url) {
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (url.starts_with(scheme)) {
            return scheme.size();
        }
    }
    return 0;
}

}  // namespace

EnterpriseUrl parseEnterpriseUrl(std::string_view url) {
    const std::size_t scheme = schemeLength(url);
    const std::size_t slash = std::min(url.find('/', scheme), url.size());
    if (scheme == 0 || slash == scheme || !std::ranges::all_of(url, isPlain)) {
        throw Fault("this is not the URL of an enterprise server: " + std::string(url));
    }
    std::string_view path = url.substr(slash);
    while (path.ends_with('/')) {
        path.remove_suffix(1);
    }
    return {std::string(url.substr(0, slash)), std::string(path)};
}

}  // namespace tandril::host
