#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "component/client20.h"
#include "component/module.h"
#include "host/host.h"
#include "host/messages.h"
#include "host/raw_http.h"
#include "platform/machine.h"
#include "support/temporary_home.h"

namespace tandril::test {

// A host on a free port, with a home and a page of its own, and what a browser knows of it after
// it opened the page.
class RunningHost {
  public:
    // `settings` without page and port.
    explicit RunningHost(host::HostSettings settings = {});

    int port() const { return host_->port(); }
    const TemporaryHome& home() const { return home_; }
    const TemporaryHome& page() const { return page_; }

    std::string origin() const;
    // The token in the launch URL.
    std::string launchToken() const;
    // "tandril-PORT=TOKEN"; the first call opens the session.
    const std::string& cookie();
    const std::string& csrf();

    // A GET as the page makes it.
    RawResponse get(std::string_view target, std::string_view moreHeaders = {});
    // A POST as the page makes it.
    RawResponse post(std::string_view target, std::string_view body,
                     std::string_view moreHeaders = {});
    // The head of such a POST, but for its length and the blank line.
    std::string postHead(std::string_view target);

    void stop() { host_->stop(); }
    // Stops the host and returns its log.
    std::string log();

  private:
    TemporaryHome home_;
    TemporaryHome page_;
    std::ostringstream log_;
    std::unique_ptr<platform::OwnedMachine> machine_;
    host::Messages messages_;
    host::AnnouncingShell shell_;
    Module module_;
    Client20 client_;
    std::unique_ptr<host::Host> host_;
    std::string cookie_;
    std::string csrf_;
};

}  // namespace tandril::test
