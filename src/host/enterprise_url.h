#pragma once

#include <string>
#include <string_view>

namespace tandril::host {

// Where the enterprise server is.
struct EnterpriseUrl {
    std::string server;  // scheme and authority: "http://enterprise.example:8080"
    std::string path;    // "" or "/base", without a slash at its end
};

// Takes a URL apart: "http" or "https", no user, query or fragment. Throws Fault.
EnterpriseUrl parseEnterpriseUrl(std::string_view url);

}  // namespace tandril::host
