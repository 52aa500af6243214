#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/http_message.h"
#include "host/tokens.h"

// Who may talk to the host, and how: one table of rules, asked in order.
namespace tandril::host {

// What the rules compare a request with.
struct Access {
    Tokens& tokens;
    int port = 0;
    std::size_t bodyLimit = 0;  // bytes
};

// The host's authority and origin: "127.0.0.1:8720" and "http://127.0.0.1:8720".
std::string authority(int port);
std::string origin(int port);

// The name of the session cookie. Cookies do not know ports, so that two hosts on one machine need
// names of their own.
std::string sessionCookie(int port);

// The response of the first rule that refuses the request; nothing when all let it pass. Looks at
// everything but the body. A launch token that passes is used up.
std::optional<Response> refusal(const Request& head, const Access& access);

// The refusal of an HTTP method where only `allowed` ("GET, POST") are taken.
Response wrongMethod(std::string_view allowed);

// The refusal of a body that turns out to be too long while it is read.
Response bodyTooLong(std::size_t limit);

}  // namespace tandril::host
