#include "host/host.h"

#include <system_error>

#include "host/request_rules.h"
#include "platform/program_folder.h"

namespace tandril::host {

Host::Host(const HostSettings& settings, Client20& client, platform::FileSystem& files,
           const Messages& messages, std::ostream& log)
    : log_(log, tokens_),
      server_(settings.port, settings.connections),
      site_({server_.port(),
             settings.page,
             settings.bodyLimit,
             {settings.enterpriseUrl, settings.enterpriseTimeout, settings.bodyLimit}},
            client, files, messages, tokens_) {
    server_.start({[this](const Request& head) { return site_.refuse(head); },
                   [this](const Request& request) { return site_.answer(request); },
                   [this](const Request& request, const Response& response) {
                       log_.write(request, response);
                   }},
                  settings.bodyLimit);
}

Host::~Host() {
    stop();
}

std::string Host::launchUrl() const {
    return origin(server_.port()) + "/?launch=" + tokens_.launch();
}

void Host::stop() {
    site_.stop();
    server_.stop();
}

std::filesystem::path defaultPageFolder() {
    std::error_code error;
    const std::filesystem::path folder = platform::programFolder();
    // A package keeps what is the same on every machine apart from the programs.
    const std::filesystem::path shared = folder.parent_path() / "share/tandril/page";
    const std::filesystem::path beside = folder / "page";
    const bool isShared = !std::filesystem::is_directory(beside, error) &&
                          std::filesystem::is_directory(shared, error);
    return isShared ? shared : beside;
}

}  // namespace tandril::host
