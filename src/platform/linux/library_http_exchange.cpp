#include <httplib.h>

#include <algorithm>

#include "platform/http_exchange.h"

namespace tandril::platform {
namespace {

httplib::Request toRequest(const HttpQuestion& question) {
    httplib::Request request;
    request.method = question.method;
    request.path = question.target;
    request.body = question.body;
    for (const auto& [name, value] : question.fields) {
        request.headers.emplace(name, value);
    }
    return request;
}

ExchangeEnd endOf(httplib::Error error) {
    switch (error) {
        case httplib::Error::Connection:
        case httplib::Error::ConnectionTimeout:
            return ExchangeEnd::Unreachable;
        case httplib::Error::SSLConnection:
            return ExchangeEnd::Insecure;
        case httplib::Error::SSLServerVerification:
            return ExchangeEnd::Untrusted;
        default:
            return ExchangeEnd::BrokenOff;
    }
}

// By the library, and its OpenSSL.
class LibraryHttpExchange final : public HttpExchange {
  public:
    LibraryHttpExchange(const std::string& server, std::chrono::seconds timeout) : client_(server) {
        client_.set_connection_timeout(std::min(timeout, longestConnecting));
        client_.set_read_timeout(timeout);
        client_.set_write_timeout(timeout);
        client_.set_url_encode(false);  // the target is sent as it is
        client_.set_follow_location(false);
    }

    ExchangeEnd run(const HttpQuestion& question, HttpAnswer& answer,
                    const Receiver& receive) override {
        httplib::Request request = toRequest(question);
        request.content_receiver = [&receive](const char* data, std::size_t size, std::uint64_t,
                                              std::uint64_t) {
            return receive({data, size});
        };
        const httplib::Result result = client_.send(request);
        if (!result) return endOf(result.error());
        answer.status = result->status;
        answer.fields.assign(result->headers.begin(), result->headers.end());
        return ExchangeEnd::Answered;
    }

    void breakOff() override { client_.stop(); }

  private:
    httplib::Client client_;
};

}  // namespace

std::unique_ptr<HttpExchange> makeHttpExchange(const std::string& server,
                                               std::chrono::seconds timeout) {
    return std::make_unique<LibraryHttpExchange>(server, timeout);
}

}  // namespace tandril::platform
