#include "enterprise/web_server.h"

#include <sys/socket.h>

#include <stdexcept>
#include <string>
#include <thread>

namespace tandril::enterprise {
namespace {

constexpr const char* address = "127.0.0.1";
constexpr const char* xmlType = "application/xml; charset=utf-8";
constexpr const char* textType = "text/plain; charset=utf-8";
constexpr std::size_t bodyLimit = std::size_t{64} << 20;

// Answers with a status and one line that says why.
void refuse(httplib::Response& response, int status, const std::string& reason) {
    response.status = status;
    response.set_content(reason + "\n", textType);
}

// A page of another site reaches this port with the visitor's browser. Such a request names its
// site in Origin or, after a switched name lookup, in Host; the clients meant here send no Origin.
bool comesFromAnotherSite(const httplib::Request& request) {
    const std::string host = request.get_header_value("Host");
    const std::string name = host.substr(0, host.find(':'));
    return request.has_header("Origin") || (name != address && name != "localhost");
}

// The library's own option would let a second server share the port unnoticed.
void setSocketOptions(socket_t socket) {
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

// What a failed request tells; the cause of the failure, if it has a text.
std::string failureText(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "unknown failure";
    }
}

}  // namespace

WebServer::WebServer(Office& office, Language fallback) : office_(office), fallback_(fallback) {
    http_.set_payload_max_length(bodyLimit);
    // An idle connection holds up the end of run() for this long.
    http_.set_keep_alive_timeout(1);
    http_.set_socket_options(setSocketOptions);
    http_.set_default_headers({{"Cache-Control", "no-store"}});
    http_.set_pre_routing_handler([](const auto& request, auto& response) {
        if (!comesFromAnotherSite(request)) return httplib::Server::HandlerResponse::Unhandled;
        refuse(response, 403, "Only programs on this machine are answered.");
        return httplib::Server::HandlerResponse::Handled;
    });
    http_.set_exception_handler([](const auto&, auto& response, const std::exception_ptr& failure) {
        refuse(response, 500, failureText(failure));
    });
    http_.set_error_handler([](const httplib::Request& request, httplib::Response& response) {
        if (!response.body.empty()) return;
        refuse(response, response.status,
               response.status == 413 ? "The body is too long."
                                      : "There is no " + request.method + " " + request.path + ".");
    });
    addRoutes();
}

int WebServer::bind(int port) {
    const int bound = port == 0 ? http_.bind_to_any_port(address)
                                : (http_.bind_to_port(address, port) ? port : -1);
    if (bound < 0) {
        throw std::runtime_error("Cannot listen on port " + std::to_string(port) +
                                 ": it is taken or not allowed");
    }
    return bound;
}

void WebServer::run() {
    running_ = true;
    if (!stopped_) http_.listen_after_bind();
    running_ = false;
}

void WebServer::stop() {
    if (stopped_.exchange(true)) return;
    // The library ignores a stop that comes before it listens.
    while (running_ && !http_.is_running()) std::this_thread::yield();
    http_.stop();
}

Language WebServer::languageOf(const httplib::Request& request) const {
    const auto asked = languageOfTag(request.get_param_value("language"));
    const auto preferred = preferredLanguage(request.get_header_value("Accept-Language"));
    return asked.value_or(preferred.value_or(fallback_));
}

void WebServer::takeUpload(const httplib::Request& request, httplib::Response& response,
                           const httplib::ContentReader& reader) {
    if (request.is_multipart_form_data()) {
        refuse(response, 415, "The upload is the body itself, not a part of a form.");
        return;
    }
    std::string body;
    const bool whole = reader([&body](const char* data, std::size_t length) {
        body.append(data, length);
        return true;
    });
    if (!whole) return;  // the library has set the status
    const std::scoped_lock lock(officeMutex_);
    try {
        response.set_content(office_.takeUpload(body, languageOf(request)), xmlType);
    } catch (const BadUpload& bad) {
        refuse(response, 400, bad.what());
    }
}

void WebServer::addRoutes() {
    http_.Get("/health", [](const httplib::Request&, httplib::Response& response) {
        response.set_content("ok\n", textType);
    });
    http_.Get("/fieldmapper", [this](const httplib::Request& request, httplib::Response& response) {
        const Language language = languageOf(request);
        response.set_header("Content-Language", std::string(languageName(language)));
        response.set_content(office_.fieldMapper(language), xmlType);
    });
    http_.Get("/orders", [this](const httplib::Request&, httplib::Response& response) {
        const std::scoped_lock lock(officeMutex_);
        response.set_content(office_.orders(), xmlType);
    });
    // With a reader of its own the body is taken whatever type it is labelled with; the library
    // would cut what is labelled as a form.
    http_.Post("/upload", [this](const auto& request, auto& response, const auto& reader) {
        takeUpload(request, response, reader);
    });
    http_.Get("/masterdata", [this](const httplib::Request&, httplib::Response& response) {
        response.set_content(office_.masterDataChanges(), xmlType);
    });
}

}  // namespace tandril::enterprise
