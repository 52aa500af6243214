#include "host/http_server.h"

#include <httplib.h>

#include <array>
#include <chrono>
#include <exception>
#include <string>
#include <thread>
#include <utility>

#include "host/connection.h"
#include "host/connection_threads.h"
#include "host/request_rules.h"
#include "platform/fault.h"
#include "platform/loopback_listener.h"

namespace tandril::host {
namespace {

constexpr int firstPort = 8720;
constexpr int portsTried = 100;

struct FixedHeader {
    const char* name;
    const char* value;
};

// On every response, those included that the library gives by itself.
constexpr std::array headersOfEveryAnswer{
    FixedHeader{"Content-Security-Policy",
                "default-src 'self'; img-src 'self' data:; object-src 'none'; base-uri 'none'; "
                "form-action 'self'; frame-ancestors 'none'"},
    FixedHeader{"X-Content-Type-Options", "nosniff"},
    FixedHeader{"Cache-Control", "no-store"},
    FixedHeader{"Referrer-Policy", "no-referrer"},
    FixedHeader{"Cross-Origin-Resource-Policy", "same-origin"},
    FixedHeader{"Cross-Origin-Opener-Policy", "same-origin"},
    FixedHeader{"X-Frame-Options", "DENY"},
};

httplib::Headers fixedHeaders() {
    httplib::Headers headers;
    for (const FixedHeader& header : headersOfEveryAnswer) {
        headers.emplace(header.name, header.value);
    }
    return headers;
}

Request toRequest(const httplib::Request& in) {
    Request request{in.method, in.target, {}, {}};
    for (const auto& [name, value] : in.headers) {
        request.headers.add(name, value);
    }
    return request;
}

void write(Response response, httplib::Response& out) {
    out.status = response.status;
    out.body = std::move(response.body);
    if (!response.contentType.empty()) {
        out.set_header("Content-Type", response.contentType);
    }
    for (const auto& [name, value] : response.headers) {
        out.set_header(name, value);
    }
}

platform::LoopbackListener listenOn(std::optional<int> port) {
    const bool any = port == 0;
    const int first = port.value_or(firstPort);
    const int last = port ? first : first + portsTried - 1;
    for (int candidate = first; candidate <= last; ++candidate) {
        if (auto listener = platform::LoopbackListener::open(candidate)) {
            return *std::move(listener);
        }
    }
    throw Fault("cannot listen on " +
                (any ? "any port of 127.0.0.1"
                     : "port " + std::to_string(first) + " of 127.0.0.1" +
                           (port ? "; is it in use?" : " or one of the next")));
}

}  // namespace

// The library's server with connections of our own.
class HttpServer::Server : public httplib::Server {
  public:
    explicit Server(const ConnectionLimits& limits) : limits_(limits) {
        set_default_headers(fixedHeaders());
        new_task_queue = [] { return new ConnectionThreads; };
    }

    // The library's own choice of socket options would let another process listen on the same port.
    void take(platform::LoopbackListener& listener) {
        svr_sock_ = static_cast<socket_t>(listener.release());
    }

    void handle(HttpHandlers handlers, std::size_t bodyLimit) {
        handlers_ = std::move(handlers);
        bodyLimit_ = bodyLimit;
        set_pre_routing_handler(
            [this](const httplib::Request& in, httplib::Response& out) { return begin(in, out); });
        Post(R"([\s\S]*)", [this](const httplib::Request& in, httplib::Response& out,
                                  const httplib::ContentReader& reader) { post(in, out, reader); });
        set_expect_100_continue_handler([this](const httplib::Request& in, httplib::Response& out) {
            return begin(in, out) == HandlerResponse::Handled ? out.status : 100;
        });
        set_error_handler(explain);
        set_exception_handler(apologise);
        set_logger(
            [this](const httplib::Request& in, const httplib::Response& out) { log(in, out); });
    }

    void interrupt() { stopEvent_.signal(); }

  private:
    // Replaces the library's, which keeps connections open and lets every byte renew its timeouts.
    bool process_and_close_socket(socket_t socket) override {
        Connection connection(socket, stopEvent_, limits_);
        bool closed = false;
        const bool good = process_request(connection, true, closed, [&](httplib::Request& request) {
            connection.beginBody();
            // The library would cut and compress answers by itself.
            request.headers.erase("Range");
            request.ranges.clear();
            request.headers.erase("Accept-Encoding");
        });
        connection.linger();
        return good;
    }

    HandlerResponse begin(const httplib::Request& in, httplib::Response& out) const {
        const Request request = toRequest(in);
        if (std::optional<Response> refusal = handlers_.refuse(request)) {
            write(std::move(*refusal), out);
            return HandlerResponse::Handled;
        }
        if (in.method == "POST") {
            return HandlerResponse::Unhandled;  // its body comes next
        }
        write(handlers_.answer(request), out);
        return HandlerResponse::Handled;
    }

    void post(const httplib::Request& in, httplib::Response& out,
              const httplib::ContentReader& reader) const {
        Request request = toRequest(in);
        bool tooLong = false;
        const bool hasBody = in.has_header("Content-Length") || in.has_header("Transfer-Encoding");
        const bool complete = !hasBody || reader([&](const char* data, std::size_t size) {
            tooLong = request.body.size() + size > bodyLimit_;
            if (!tooLong) {
                request.body.append(data, size);
            }
            return !tooLong;
        });
        if (tooLong) {
            write(bodyTooLong(bodyLimit_), out);
        } else if (!complete) {
            write(textResponse(400, "the body did not arrive"), out);
        } else {
            write(handlers_.answer(request), out);
        }
    }

    // The library's own refusals come without a word, and it takes a method that it does not know
    // for a malformed request.
    static void explain(const httplib::Request& in, httplib::Response& out) {
        if (!out.body.empty()) {
            return;
        }
        if (out.status == 400 && !in.target.empty() && in.method != "GET" && in.method != "POST") {
            write(wrongMethod("GET, POST"), out);
        } else if (out.status == 414) {
            write(textResponse(414, "the URL is too long"), out);
        } else {
            write(textResponse(out.status, "the request is malformed"), out);
        }
    }

    static void apologise(const httplib::Request&, httplib::Response& out,
                          const std::exception_ptr& failure) {
        std::string reason = "unknown";
        try {
            std::rethrow_exception(failure);
        } catch (const std::exception& error) {
            reason = error.what();
        } catch (...) {
        }
        write(textResponse(500, "the host has failed at this request: " + reason), out);
    }

    void log(const httplib::Request& in, const httplib::Response& out) const {
        // Of a success only the status is told; its body may be long.
        const std::string reason = out.status < 400 ? "" : out.body;
        handlers_.log(toRequest(in),
                      {out.status, out.get_header_value("Content-Type"), reason, {}});
    }

    ConnectionLimits limits_;
    HttpHandlers handlers_;
    std::size_t bodyLimit_ = 0;
    platform::StopEvent stopEvent_;
};

HttpServer::HttpServer(std::optional<int> port, const ConnectionLimits& limits)
    : server_(std::make_unique<Server>(limits)), listener_(listenOn(port)) {}

HttpServer::~HttpServer() {
    stop();
}

void HttpServer::start(HttpHandlers handlers, std::size_t bodyLimit) {
    server_->handle(std::move(handlers), bodyLimit);
    server_->take(listener_);
    thread_ = std::thread([this] { server_->listen_after_bind(); });
}

void HttpServer::stop() {
    if (!thread_.joinable()) {
        return;
    }
    // Before it runs the library does not notice that it is to stop.
    while (!server_->is_running()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    server_->interrupt();
    server_->stop();
    thread_.join();
}

}  // namespace tandril::host
