#include "host/routes.h"

#include <algorithm>
#include <array>

namespace tandril::host {
namespace {

// The first that fits counts.
constexpr std::array allRoutes{
    Route{"/client20/methods", "GET", Endpoint::Methods},
    Route{"/client20/", "POST", Endpoint::Call},
    Route{"/session", "GET", Endpoint::Session},
    Route{"/journal", "GET, POST", Endpoint::Journal},
    Route{"/messages", "GET", Endpoint::Messages},
    Route{"/enterprise/", "GET, POST", Endpoint::Enterprise},
    Route{"/", "GET", Endpoint::Page},
};

bool fits(const Route& route, std::string_view path) {
    return route.path.ends_with('/') ? path.starts_with(route.path) : path == route.path;
}

}  // namespace

const Route& routeOf(std::string_view path) {
    const auto* route =
        std::ranges::find_if(allRoutes, [path](const Route& row) { return fits(row, path); });
    return route != allRoutes.end() ? *route : allRoutes.back();
}

bool takes(const Route& route, std::string_view method) {
    return (", " + std::string(route.methods) + ",").find(", " + std::string(method) + ",") !=
           std::string::npos;
}

}  // namespace tandril::host
