#pragma once

#include <httplib.h>

#include <atomic>
#include <mutex>

#include "enterprise/language.h"
#include "enterprise/office.h"

namespace tandril::enterprise {

// The office on 127.0.0.1. Requests are answered by several threads, the office is asked by one at
// a time.
class WebServer {
  public:
    // `fallback` is the language of clients that name none of ours.
    WebServer(Office& office, Language fallback);

    // Takes the port; 0 takes any free one. Returns the port. Throws std::runtime_error when it
    // cannot be had.
    int bind(int port);

    // Answers requests until stop() is called. bind() comes first.
    void run();

    // Ends run() once the running requests are answered, or keeps it from starting. May be called
    // from any thread.
    void stop();

  private:
    Office& office_;
    Language fallback_;
    std::mutex officeMutex_;
    httplib::Server http_;
    std::atomic<bool> running_ = false;
    std::atomic<bool> stopped_ = false;

    void addRoutes();
    void takeUpload(const httplib::Request& request, httplib::Response& response,
                    const httplib::ContentReader& reader);
    Language languageOf(const httplib::Request& request) const;
};

}  // namespace tandril::enterprise
