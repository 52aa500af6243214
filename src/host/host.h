#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

#include "component/client20.h"
#include "host/access_log.h"
#include "host/http_server.h"
#include "host/messages.h"
#include "host/site.h"
#include "host/tokens.h"

namespace tandril::host {

struct HostSettings {
    std::optional<int> port;  // none: 8720 or the next free one; 0: any free one
    std::filesystem::path page;
    std::string enterpriseUrl;  // empty: there is no enterprise server
    std::chrono::seconds enterpriseTimeout{60};
    std::size_t bodyLimit = std::size_t{64} * 1024 * 1024;  // bytes
    ConnectionLimits connections;
};

// The web host: shows the page in a browser on this machine and makes its calls. docs/host.md is
// the contract with the page.
class Host {
  public:
    // Listens, and answers from now on; requests are logged to `log`. The client and
    // the files that it works on are used from another thread until the host is gone. Throws Fault
    // when a setting leads nowhere.
    Host(const HostSettings& settings, Client20& client, platform::FileSystem& files,
         const Messages& messages, std::ostream& log);
    // Stops.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    int port() const { return server_.port(); }

    // Opens the page. Good for one visit.
    std::string launchUrl() const;

    // Stops when the running call is done.
    void stop();

  private:
    Tokens tokens_;
    AccessLog log_;
    HttpServer server_;
    Site site_;
};

// The folder "page" beside the running program, or, where there is none, "share/tandril/page"
// beside the program's folder.
std::filesystem::path defaultPageFolder();

}  // namespace tandril::host
