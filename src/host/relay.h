#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>

#include "host/enterprise_url.h"
#include "host/http_message.h"
#include "platform/http_exchange.h"

namespace tandril::host {

struct RelaySettings {
    std::string url;  // empty: there is no enterprise server
    std::chrono::seconds timeout{60};
    std::size_t bodyLimit = 0;  // bytes, of the answer
};

// Passes requests on to the enterprise server. Only what the request is about goes on and comes
// back; cookies and the host's tokens stay here. Safe for concurrent use.
class Relay {
  public:
    // Throws Fault when the URL is none.
    explicit Relay(RelaySettings settings);
    ~Relay();
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    // Answers a request for "/enterprise/PATH". 503 without an enterprise server; 502 when it
    // cannot be reached, does not answer in time, redirects, or answers with too much.
    Response answer(const Request& request);

    // Breaks off the requests under way, waits for their end and makes no new ones.
    void stop();

  private:
    class Exchange;

    RelaySettings settings_;
    std::optional<EnterpriseUrl> url_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool stopped_ = false;
    std::set<platform::HttpExchange*> underWay_;
};

}  // namespace tandril::host
