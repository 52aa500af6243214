#include "host/relay.h"

#include <httplib.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tandril::host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array<std::string_view, 3> kRequestHeaders{"Accept", "Accept-Language",
                                                          "Content-Type"};
constexpr std::array<std::string_view, 4> kAnswerHeaders{"Content-Language", "Content-Disposition",
                                                         "ETag", "Last-Modified"};

// "/enterprise/fieldmapper?a=1" asks for "<base>/fieldmapper?a=1".
std::string targetAt(const EnterpriseUrl& url, std::string_view target) {
    return url.path + std::string(target.substr(target.find('/', 1)));
}

httplib::Request outgoing(const Request& request, const EnterpriseUrl& url) {
    httplib::Request out;
    out.method = request.method;
    out.path = targetAt(url, request.target);
    out.body = request.body;
    out.set_header("User-Agent", "tandril");
    // The answer is passed on as it is, so that nothing is gained by compressing it.
    out.set_header("Accept-Encoding", "identity");
    for (const std::string_view name : kRequestHeaders) {
        for (const std::string_view value : request.headers.all(name)) {
            out.set_header(std::string(name), std::string(value));
        }
    }
    return out;
}

Response badGateway(std::string_view reason) {
    return textResponse(502, "the enterprise server " + std::string(reason));
}

Response incoming(const httplib::Response& answer, std::string body) {
    Response response{answer.status, answer.get_header_value("Content-Type"), std::move(body), {}};
    for (const std::string_view name : kAnswerHeaders) {
        const std::string value = answer.get_header_value(std::string(name));
        if (!value.empty()) {
            response.headers.add(std::string(name), value);
        }
    }
    return response;
}

}  // namespace

// One request to the enterprise server and its answer.
class Relay::Exchange {
  public:
    Exchange(Relay& relay, const EnterpriseUrl& url)
        : relay_(relay), client_(url.server), deadline_(Clock::now() + relay.settings_.timeout) {
        client_.set_connection_timeout(std::min(relay.settings_.timeout, std::chrono::seconds(10)));
        client_.set_read_timeout(relay.settings_.timeout);
        client_.set_write_timeout(relay.settings_.timeout);
        client_.set_url_encode(false);  // the target is passed on as it came
        client_.set_follow_location(false);
        const std::lock_guard lock(relay_.mutex_);
        stopped_ = relay_.stopped_;
        relay_.underWay_.insert(&client_);
    }
    ~Exchange() {
        const std::lock_guard lock(relay_.mutex_);
        relay_.underWay_.erase(&client_);
        relay_.ended_.notify_all();
    }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    Response run(httplib::Request request) {
        if (stopped_) {
            return textResponse(503, "the host is stopping");
        }
        request.content_receiver = [this](const char* data, std::size_t size, std::uint64_t,
                                          std::uint64_t) {
            return receive({data, size});
        };
        const httplib::Result result = client_.send(request);
        if (tooLong_) {
            return badGateway("answers with too much");
        }
        if (late_) {
            return badGateway("does not answer in time");
        }
        if (!result) {
            return badGateway(result.error() == httplib::Error::Connection ||
                                      result.error() == httplib::Error::ConnectionTimeout
                                  ? "cannot be reached"
                                  : "does not answer, or not in time");
        }
        if (result->status >= 300 && result->status < 400) {
            return badGateway("redirects");
        }
        return incoming(*result, std::move(body_));
    }

  private:
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
    httplib::Client client_;
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
    // A client that is still connecting takes no notice; it is told again.
    constexpr auto kAgain = std::chrono::milliseconds(20);
    while (!underWay_.empty()) {
        for (httplib::Client* client : underWay_) {
            client->stop();
        }
        ended_.wait_for(lock, kAgain);
    }
}

}  // namespace tandril::host
