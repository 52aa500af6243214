#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tandril::platform {

using HttpFields = std::vector<std::pair<std::string, std::string>>;

// A request to a server elsewhere. Nothing is added to it but what the protocol needs.
struct HttpQuestion {
    std::string method;  // "GET" or "POST"
    std::string target;  // path and query, encoded; sent as it is
    HttpFields fields;
    std::string body;
};

struct HttpAnswer {
    int status = 0;
    HttpFields fields;

    // The value of the first field of that name, in any case; empty when there is none.
    std::string_view field(std::string_view name) const;
};

enum class ExchangeEnd {
    Answered,     // the whole answer has come
    Unreachable,  // there is no connection
    Insecure,     // there is a connection, but the two agree on no way to make it a secure one
    Untrusted,    // the certificate is not that of the server, or nobody vouches for it
    BrokenOff,  // on the way: in error, by the receiver, by the server's silence, or by breakOff()
};

// One request over "http" or "https" and its answer. Follows no redirect, keeps no cookie, asks no
// proxy, and proves the server's certificate against those that the system trusts.
class HttpExchange {
  public:
    virtual ~HttpExchange() = default;

    // Takes the pieces of the answer's body; false breaks off.
    using Receiver = std::function<bool(std::string_view piece)>;

    // Asks, once. The answer's status and fields are there when it is Answered.
    virtual ExchangeEnd run(const HttpQuestion& question, HttpAnswer& answer,
                            const Receiver& receive) = 0;

    // Ends run() soon. For other threads; one that runs only just now may have to be told again.
    virtual void breakOff() = 0;
};

// How long a connection may take to come about.
inline constexpr std::chrono::seconds longestConnecting{10};

// For a server by its scheme and authority ("https://enterprise.example:8443") that may be silent
// for `timeout` at a time.
std::unique_ptr<HttpExchange> makeHttpExchange(const std::string& server,
                                               std::chrono::seconds timeout);

}  // namespace tandril::platform
