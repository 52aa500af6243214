#include "host/relay.h"

#include <array>
#include <string_view>
#include <utility>

namespace tandril::host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array<std::string_view, 3> requestHeaders{"Accept", "Accept-Language",
                                                         "Content-Type"};
constexpr std::array<std::string_view, 4> answerHeaders{"Content-Language", "Content-Disposition",
                                                        "ETag", "Last-Modified"};

// "/enterprise/fieldmapper?a=1" asks for "<base>/fieldmapper?a=1".
std::string targetAt(const EnterpriseUrl& url, std::string_view target) {
    return url.path + std::string(target.substr(target.find('/', 1)));
}

platform::HttpQuestion outgoing(const Request& request, const EnterpriseUrl& url) {
    platform::HttpQuestion out{request.method, targetAt(url, request.target), {}, request.body};
    out.fields.emplace_back("User-Agent", "tandril");
    // The answer is passed on as it is, so that nothing is gained by compressing it.
    out.fields.emplace_back("Accept-Encoding", "identity");
    for (const std::string_view name : requestHeaders) {
        for (const std::string_view value : request.headers.all(name)) {
            out.fields.emplace_back(name, value);
        }
    }
    return out;
}

Response badGateway(std::string_view reason) {
    return textResponse(502, "the enterprise server " + std::string(reason));
}

Response incoming(const platform::HttpAnswer& answer, std::string body) {
    Response response{
        answer.status, std::string(answer.field("Content-Type")), std::move(body), {}};
    for (const std::string_view name : answerHeaders) {
        if (const std::string_view value = answer.field(name); !value.empty()) {
            response.headers.add(std::string(name), std::string(value));
        }
    }
    return response;
}

}  // namespace

// One request to the enterprise server and its answer.
class Relay::Exchange {
  public:
    Exchange(Relay& relay, const EnterpriseUrl& url)
        : relay_(relay),
          exchange_(platform::makeHttpExchange(url.server, relay.settings_.timeout)),
          deadline_(Clock::now() + relay.settings_.timeout) {
        const std::lock_guard lock(relay_.mutex_);
        stopped_ = relay_.stopped_;
        relay_.underWay_.insert(exchange_.get());
    }
    ~Exchange() {
        const std::lock_guard lock(relay_.mutex_);
        relay_.underWay_.erase(exchange_.get());
        relay_.ended_.notify_all();
    }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    Response run(const platform::HttpQuestion& question) {
        if (stopped_) {
            return textResponse(503, "the host is stopping");
        }
        platform::HttpAnswer answer;
        const platform::ExchangeEnd end = exchange_->run(
            question, answer, [this](std::string_view piece) { return receive(piece); });
        if (tooLong_) {
            return badGateway("answers with too much");
        }
        if (late_) {
            return badGateway("does not answer in time");
        }
        if (end != platform::ExchangeEnd::Answered) {
            return badGateway(whyNot(end));
        }
        if (answer.status >= 300 && answer.status < 400) {
            return badGateway("redirects");
        }
        return incoming(answer, std::move(body_));
    }

  private:
    static std::string_view whyNot(platform::ExchangeEnd end) {
        switch (end) {
            case platform::ExchangeEnd::Unreachable:
                return "cannot be reached";
            case platform::ExchangeEnd::Insecure:
                return "makes no secure connection";
            case platform::ExchangeEnd::Untrusted:
                return "has no valid certificate";
            default:
                return "does not answer, or not in time";
        }
    }

    bool receive(std::string_view data) {
        tooLong_ = body_.size() + data.size() > relay_.settings_.bodyLimit;
        late_ = Clock::now() > deadline_;
        if (tooLong_ || late_) {
            return false;
        }
        body_ += data;
        return true;
    }

    Relay& relay_;
    std::unique_ptr<platform::HttpExchange> exchange_;
    Clock::time_point deadline_;
    std::string body_;
    bool stopped_ = false;
    bool tooLong_ = false;
    bool late_ = false;
};

Relay::Relay(RelaySettings settings) : settings_(std::move(settings)) {
    if (!settings_.url.empty()) {
        url_ = parseEnterpriseUrl(settings_.url);
    }
}

Relay::~Relay() = default;

Response Relay::answer(const Request& request) {
    if (!url_) {
        return textResponse(503, "there is no enterprise server; --enterprise names one");
    }
    return Exchange(*this, *url_).run(outgoing(request, *url_));
}

void Relay::stop() {
    std::unique_lock lock(mutex_);
    stopped_ = true;
    // One that is still connecting may take no notice; it is told again.
    constexpr auto retryPause = std::chrono::milliseconds(20);
    while (!underWay_.empty()) {
        for (platform::HttpExchange* exchange : underWay_) {
            exchange->breakOff();
        }
        ended_.wait_for(lock, retryPause);
    }
}

}  // namespace tandril::host
