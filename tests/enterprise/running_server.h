#pragma once

#include <httplib.h>

#include <chrono>
#include <string>
#include <thread>

#include "enterprise/web_server.h"

namespace tandril::enterprise {

// A machine under load may need longer than a client waits by itself.
inline void bePatient(httplib::Client& client) {
    client.set_read_timeout(std::chrono::seconds(60));
    client.set_write_timeout(std::chrono::seconds(60));
}

// A server on a free port for the length of a test, with a client that talks to it.
class RunningServer {
  public:
    explicit RunningServer(Office& office, Language fallback = Language::English)
        : server_(office, fallback),
          port_(server_.bind(0)),
          client_("127.0.0.1", port_),
          thread_([this] { server_.run(); }) {
        bePatient(client_);
    }
    ~RunningServer() { server_.stop(); }
    RunningServer(const RunningServer&) = delete;
    RunningServer& operator=(const RunningServer&) = delete;

    int port() const { return port_; }

    // Throws when the server does not answer.
    httplib::Response get(const std::string& path, const httplib::Headers& headers = {}) {
        return client_.Get(path, headers).value();
    }
    httplib::Response post(const std::string& path, const std::string& body,
                           const httplib::Headers& headers = {}) {
        return client_.Post(path, headers, body, "application/xml").value();
    }

  private:
    WebServer server_;
    int port_;
    httplib::Client client_;
    std::jthread thread_;
};

}  // namespace tandril::enterprise
