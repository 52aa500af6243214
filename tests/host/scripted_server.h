#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "host/plain_socket.h"

namespace tandril::test {

// Stands for an enterprise server: takes requests on a free port of 127.0.0.1, keeps them, and
// answers each with the same bytes.
class ScriptedServer {
  public:
    // What happens after the bytes were sent.
    enum class Then { Close, KeepOpen };

    explicit ScriptedServer(std::string answer, Then then = Then::Close);
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    // "http://127.0.0.1:PORT"
    std::string url() const;
    // "127.0.0.1:PORT"
    std::string authority() const;

    // The requests so far, head and body as they came.
    std::vector<std::string> requests() const;

  private:
    void serve();
    void answerOne(PlainSocket socket);

    std::string answer_;
    Then then_;
    PlainSocket listener_;
    std::atomic<bool> isOver_ = false;
    mutable std::mutex mutex_;
    std::vector<std::string> requests_;
    std::vector<PlainSocket> open_;
    std::thread thread_;
};

}  // namespace tandril::test
