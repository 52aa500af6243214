#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "host/connection_limits.h"
#include "host/http_message.h"
#include "platform/loopback_listener.h"

namespace tandril::host {

// What the server asks. The functions are called from several threads at a time.
struct HttpHandlers {
    // Asked with the head alone; nothing lets the request go on.
    std::function<std::optional<Response>(const Request&)> refuse;
    // Asked with the whole request.
    std::function<Response(const Request&)> answer;
    // Told of every request and its response.
    std::function<void(const Request&, const Response&)> log;
};

// HTTP on 127.0.0.1: one request per connection, each connection on a thread of its own. This is
// all that the program sees of the HTTP library's server.
class HttpServer {
  public:
    // Listens on the port; 0 takes any free one, nothing takes 8720 or the next free one. Throws
    // Fault when the port cannot be had.
    explicit HttpServer(std::optional<int> port, const ConnectionLimits& limits = {});
    // Stops.
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    int port() const { return listener_.port(); }

    // Begins to answer. `bodyLimit` is in bytes.
    void start(HttpHandlers handlers, std::size_t bodyLimit);

    // Takes no more connections, gives up those whose request is not complete, and waits until the
    // others are answered.
    void stop();

  private:
    class Server;

    std::unique_ptr<Server> server_;
    platform::LoopbackListener listener_;
    std::thread thread_;
};

}  // namespace tandril::host
