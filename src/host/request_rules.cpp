#include "host/request_rules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>

#include "host/routes.h"
#include "platform/ascii.h"

namespace tandril::host {
namespace {

using Refusal = std::optional<Response>;

// A request whose path was decoded.
struct Visitor {
    const Request& request;
    const Access& access;
    std::string path;
    bool decodable = true;

    bool posts() const { return request.method == "POST"; }
    bool visitsStart() const { return request.method == "GET" && path == "/"; }
    bool launches(std::string_view& token) const {
        return visitsStart() && queryParameter(request.rawQuery(), "launch", token);
    }
    Endpoint endpoint() const { return routeOf(path).endpoint; }
};

Refusal methodIsKnown(const Visitor& visitor) {
    if (visitor.request.method == "GET" || visitor.posts()) {
        return std::nullopt;
    }
    return wrongMethod("GET, POST");
}

// Against names that an attacker's DNS points to this machine.
Refusal hostIsOurs(const Visitor& visitor) {
    if (visitor.request.headers.only("Host") == authority(visitor.access.port)) {
        return std::nullopt;
    }
    return textResponse(421, "the Host header must be " + authority(visitor.access.port));
}

bool isForbiddenByte(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F || c == '\\';
}

bool hasDotSegment(std::string_view path) {
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::string_view segment = path.substr(0, path.find('/'));
        if (segment == "." || segment == "..") {
            return true;
        }
        path.remove_prefix(segment.size());
    }
    return false;
}

Refusal pathIsPlain(const Visitor& visitor) {
    const std::string& path = visitor.path;
    const std::string_view raw = visitor.request.rawPath();
    const bool sameSlashes = std::ranges::count(path, '/') == std::ranges::count(raw, '/');
    if (visitor.decodable && raw.starts_with('/') && sameSlashes &&
        std::ranges::none_of(path, isForbiddenByte) && !hasDotSegment(path)) {
        return std::nullopt;
    }
    return textResponse(400, "the path is malformed");
}

bool hasSession(const Headers& headers, const Access& access) {
    const std::string wanted = sessionCookie(access.port) + "=";
    for (std::string_view cookies : headers.all("Cookie")) {
        while (!cookies.empty()) {
            std::string_view cookie = cookies.substr(0, cookies.find(';'));
            cookies.remove_prefix(std::min(cookie.size() + 1, cookies.size()));
            cookie.remove_prefix(std::min(cookie.find_first_not_of(' '), cookie.size()));
            if (cookie.starts_with(wanted) &&
                access.tokens.isSession(cookie.substr(wanted.size()))) {
                return true;
            }
        }
    }
    return false;
}

// Where there is a launch token it alone decides.
Refusal visitorIsKnown(const Visitor& visitor) {
    std::string_view token;
    if (visitor.launches(token)) {
        if (visitor.access.tokens.redeemLaunch(token)) {
            return std::nullopt;
        }
        return textResponse(403, "the launch token is wrong or was used; start the host anew");
    }
    if (hasSession(visitor.request.headers, visitor.access)) {
        return std::nullopt;
    }
    return textResponse(401, "there is no session; open the URL that tandril serve printed");
}

Refusal siteIsOurs(const Visitor& visitor) {
    if (visitor.visitsStart()) {
        return std::nullopt;
    }
    const std::string own = origin(visitor.access.port);
    for (const std::string_view value : visitor.request.headers.all("Origin")) {
        if (value != own) {
            return textResponse(403, "the request comes from another site");
        }
    }
    for (const std::string_view value : visitor.request.headers.all("Sec-Fetch-Site")) {
        if (value != "same-origin" && value != "none") {
            return textResponse(403, "the request comes from another site");
        }
    }
    return std::nullopt;
}

// The rule before has refused other origins.
Refusal postNamesOurSite(const Visitor& visitor) {
    const Headers& headers = visitor.request.headers;
    if (!visitor.posts() || headers.has("Origin") ||
        headers.only("Sec-Fetch-Site") == "same-origin") {
        return std::nullopt;
    }
    return textResponse(403, "a POST needs the Origin " + origin(visitor.access.port));
}

Refusal postHasCsrfToken(const Visitor& visitor) {
    if (!visitor.posts() ||
        visitor.access.tokens.isCsrf(visitor.request.headers.only("X-Tandril-Csrf"))) {
        return std::nullopt;
    }
    return textResponse(403, "the header X-Tandril-Csrf is missing or wrong");
}

// Browsers say "empty" for what a script asks and "document", "image" and so on for the rest.
bool isAskedByScript(const Headers& headers) {
    return std::ranges::all_of(headers.all("Sec-Fetch-Dest"),
                               [](std::string_view value) { return value == "empty"; });
}

// What the enterprise server sends is data. As a document it would run in the page's origin.
Refusal enterpriseIsAskedByScript(const Visitor& visitor) {
    if (visitor.endpoint() != Endpoint::Enterprise || isAskedByScript(visitor.request.headers)) {
        return std::nullopt;
    }
    return textResponse(403, "only scripts of the page may ask the enterprise server");
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool isJsonInUtf8(std::string_view contentType) {
    const std::string folded = platform::foldAscii(contentType);
    std::string_view rest = folded;
    const std::string_view type = rest.substr(0, rest.find(';'));
    if (trimmed(type) != "application/json") {
        return false;
    }
    rest.remove_prefix(type.size());
    while (!rest.empty()) {
        rest.remove_prefix(1);
        const std::string_view parameter = rest.substr(0, rest.find(';'));
        rest.remove_prefix(parameter.size());
        const std::string_view text = trimmed(parameter);
        if (text.starts_with("charset") && text != "charset=utf-8" && text != "charset=\"utf-8\"") {
            return false;
        }
    }
    return true;
}

Refusal callIsJson(const Visitor& visitor) {
    const bool isJson =
        visitor.endpoint() == Endpoint::Call || visitor.endpoint() == Endpoint::Journal;
    if (!visitor.posts() || !isJson || isJsonInUtf8(visitor.request.headers.only("Content-Type"))) {
        return std::nullopt;
    }
    return textResponse(415, "the body of a call must be application/json in UTF-8");
}

// A compressed body could grow without limit, and an unclear length could hide a second request.
Refusal bodyIsPlain(const Visitor& visitor) {
    const Headers& headers = visitor.request.headers;
    if (headers.has("Content-Encoding")) {
        return textResponse(415, "the body must not be compressed");
    }
    const std::size_t lengths = headers.all("Content-Length").size();
    const std::size_t codings = headers.all("Transfer-Encoding").size();
    const bool chunked = platform::foldAscii(headers.only("Transfer-Encoding")) == "chunked";
    if (lengths + codings > 1 || (codings == 1 && !chunked)) {
        return textResponse(400, "the body needs one Content-Length, or must be chunked");
    }
    return std::nullopt;
}

Refusal bodyIsNotTooLong(const Visitor& visitor) {
    if (!visitor.request.headers.has("Content-Length")) {
        return std::nullopt;
    }
    const std::string_view text = visitor.request.headers.only("Content-Length");
    const char* end = text.data() + text.size();
    std::uint64_t length = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, length);
    if (stop != end || error == std::errc::invalid_argument) {
        return textResponse(400, "the Content-Length is not a number");
    }
    if (error == std::errc::result_out_of_range || length > visitor.access.bodyLimit) {
        return bodyTooLong(visitor.access.bodyLimit);
    }
    return std::nullopt;
}

Refusal pathTakesMethod(const Visitor& visitor) {
    const Route& route = routeOf(visitor.path);
    return takes(route, visitor.request.method) ? std::nullopt
                                                : std::optional(wrongMethod(route.methods));
}

// The order is part of what docs/host.md promises.
using Rule = Refusal (*)(const Visitor&);
constexpr std::array<Rule, 12> rules{
    methodIsKnown, hostIsOurs,       pathIsPlain,      visitorIsKnown,
    siteIsOurs,    postNamesOurSite, postHasCsrfToken, enterpriseIsAskedByScript,
    callIsJson,    bodyIsPlain,      bodyIsNotTooLong, pathTakesMethod,
};

}  // namespace

std::string authority(int port) {
    return "127.0.0.1:" + std::to_string(port);
}

std::string origin(int port) {
    return "http://" + authority(port);
}

std::string sessionCookie(int port) {
    return "tandril-" + std::to_string(port);
}

std::optional<Response> refusal(const Request& head, const Access& access) {
    Visitor visitor{head, access, {}, true};
    visitor.decodable = percentDecode(head.rawPath(), visitor.path);
    for (const Rule rule : rules) {
        if (std::optional<Response> response = rule(visitor)) {
            return response;
        }
    }
    return std::nullopt;
}

Response wrongMethod(std::string_view allowed) {
    Response response = textResponse(405, "this takes " + std::string(allowed) + " only");
    response.headers.add("Allow", std::string(allowed));
    return response;
}

Response bodyTooLong(std::size_t limit) {
    return textResponse(413, "the body is longer than " + std::to_string(limit) + " bytes");
}

}  // namespace tandril::host
