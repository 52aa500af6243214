#pragma once

#include <string>
#include <string_view>

namespace tandril::host {

// What answers a path.
enum class Endpoint {
    Methods,     // the table of methods
    Call,        // a call of the method that the path names
    Session,     // what the page needs to know of its session
    Journal,     // what the page must know again after a crash
    Messages,    // what the component has shown
    Enterprise,  // the enterprise server
    Page,        // a file of the page folder
};

struct Route {
    std::string_view path;     // a prefix when it ends with "/", else the whole path
    std::string_view methods;  // as an Allow header has them: "GET, POST"
    Endpoint endpoint;
};

// The route of a decoded path that begins with "/".
const Route& routeOf(std::string_view path);

// Whether the route takes the HTTP method.
bool takes(const Route& route, std::string_view method);

}  // namespace tandril::host
