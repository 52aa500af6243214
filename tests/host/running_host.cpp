#include "host/running_host.h"

#include <nlohmann/json.hpp>

#include "host/request_rules.h"

namespace tandril::test {

namespace {

platform::Machine withShell(const platform::Machine& machine, platform::Shell& shell) {
    return {machine.registry, machine.files, machine.database, shell, machine.clock};
}

}  // namespace

RunningHost::RunningHost(host::HostSettings settings)
    : machine_(platform::openMachine(home_.path())),
      shell_(machine_->machine().shell, messages_, log_),
      module_(withShell(machine_->machine(), shell_)),
      client_(module_) {
    page_.write("index.html", "<!DOCTYPE html><title>start</title>");
    settings.page = page_.path();
    settings.port = 0;
    host_ =
        std::make_unique<host::Host>(settings, client_, machine_->machine().files, messages_, log_);
}

std::string RunningHost::origin() const {
    return host::origin(port());
}

std::string RunningHost::launchToken() const {
    const std::string url = host_->launchUrl();
    return url.substr(url.find('=') + 1);
}

const std::string& RunningHost::cookie() {
    if (cookie_.empty()) {
        const RawResponse response =
            exchange(port(), "GET /?launch=" + launchToken() +
                                 " HTTP/1.1\r\nHost: " + host::authority(port()) + "\r\n\r\n");
        const std::string header = response.header("Set-Cookie");
        cookie_ = header.substr(0, header.find(';'));
    }
    return cookie_;
}

const std::string& RunningHost::csrf() {
    if (csrf_.empty()) {
        csrf_ = nlohmann::json::parse(get("/session").body).at("csrf");
    }
    return csrf_;
}

RawResponse RunningHost::get(std::string_view target, std::string_view moreHeaders) {
    return exchange(port(),
                    "GET " + std::string(target) + " HTTP/1.1\r\nHost: " + host::authority(port()) +
                        "\r\nCookie: " + cookie() + "\r\n" + std::string(moreHeaders) + "\r\n");
}

RawResponse RunningHost::post(std::string_view target, std::string_view body,
                              std::string_view moreHeaders) {
    return exchange(port(), postHead(target) + std::string(moreHeaders) + "Content-Length: " +
                                std::to_string(body.size()) + "\r\n\r\n" + std::string(body));
}

std::string RunningHost::postHead(std::string_view target) {
    return "POST " + std::string(target) + " HTTP/1.1\r\nHost: " + host::authority(port()) +
           "\r\nCookie: " + cookie() + "\r\nOrigin: " + origin() + "\r\nX-Tandril-Csrf: " + csrf() +
           "\r\nContent-Type: application/json\r\n";
}

std::string RunningHost::log() {
    stop();
    return log_.str();
}

}  // namespace tandril::test
