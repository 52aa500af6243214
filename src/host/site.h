#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "component/client20.h"
#include "host/http_message.h"
#include "host/journal.h"
#include "host/messages.h"
#include "host/page_files.h"
#include "host/relay.h"
#include "host/request_rules.h"
#include "host/tokens.h"
#include "host/turn_queue.h"

namespace tandril::host {

// Everything that the host answers, behind the rules that say to whom. Safe for concurrent use.
class Site {
  public:
    struct Settings {
        int port = 0;
        std::filesystem::path page;
        std::size_t bodyLimit = 0;
        RelaySettings enterprise;
    };

    // `client` and `files` are used from another thread from now on, until the site is gone. Throws
    // Fault when a setting leads nowhere.
    Site(Settings settings, Client20& client, platform::FileSystem& files, const Messages& messages,
         Tokens& tokens);

    // The refusal of a request whose body was not read yet; nothing when it may go on to answer().
    std::optional<Response> refuse(const Request& head) const;

    Response answer(const Request& request);

    std::size_t bodyLimit() const { return settings_.bodyLimit; }

    // Lets the running call end, drops the waiting ones and breaks off those to the enterprise
    // server.
    void stop();

  private:
    Response call(std::string_view method, const std::string& body);
    Response journal(const Request& request);
    Response messages(const Request& request) const;
    Response page(const Request& request, std::string_view path) const;

    const Settings settings_;
    Client20& client_;
    Journal journal_;
    const Messages& messages_;
    Tokens& tokens_;
    PageFiles files_;
    Relay relay_;
    TurnQueue turns_;
};

}  // namespace tandril::host
