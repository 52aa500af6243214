#include "cli/serve_command.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstddef>
#include <memory>
#include <ostream>

#include "component/client20.h"
#include "component/module.h"
#include "host/home_lock.h"
#include "host/host.h"
#include "host/messages.h"
#include "platform/browser.h"
#include "platform/machine.h"
#include "platform/stop_signals.h"
#include "platform/utf8_path.h"

namespace tandril::cli {
namespace {

constexpr int lastPort = 65535;
constexpr int longestTimeout = 3600;
constexpr int highestBodyLimit = 1024;

}  // namespace

void ServeCommand::define(Parser& parser) {
    home_.define(parser);
    parser
        .add_option("--port", port_,
                    "Listen on this port of 127.0.0.1; 0: any free one (default: 8720 or the next "
                    "free one)")
        ->type_name("N")
        ->check(CLI::Range(0, lastPort));
    parser
        .add_option("--page", page_,
                    "The page's files (default: the folder page beside the program, else "
                    "share/tandril/page beside the program's folder)")
        ->type_name("DIR");
    parser
        .add_option("--enterprise", enterprise_, "Pass requests for /enterprise/ on to this server")
        ->type_name("URL");
    parser
        .add_option("--enterprise-timeout", enterpriseTimeout_,
                    "Give up waiting for it after this time")
        ->type_name("SECONDS")
        ->capture_default_str()
        ->check(CLI::Range(1, longestTimeout));
    parser.add_flag("--open", open_, "Open the page in the browser");
    parser.add_option("--body-limit", bodyLimit_, "Refuse longer requests")
        ->type_name("MiB")
        ->capture_default_str()
        ->check(CLI::Range(1, highestBodyLimit));
}

int ServeCommand::run(const Streams& streams) {
    platform::StopSignals signals;
    const std::string home = home_.folder();
    const host::HomeLock lock(home);
    const std::unique_ptr<platform::OwnedMachine> owned = platform::openMachine(home);
    platform::Machine machine = owned->machine();
    host::Messages messages;
    host::AnnouncingShell shell(machine.shell, messages, streams.err);
    Module module({machine.registry, machine.files, machine.database, shell, machine.clock});
    Client20 client(module);

    host::HostSettings settings;
    settings.port = port_;
    settings.page = page_.empty() ? host::defaultPageFolder() : platform::pathFromUtf8(page_);
    settings.enterpriseUrl = enterprise_;
    settings.enterpriseTimeout = std::chrono::seconds(enterpriseTimeout_);
    settings.bodyLimit = static_cast<std::size_t>(bodyLimit_) * 1024 * 1024;
    host::Host host(settings, client, machine.files, messages, streams.err);

    streams.out << host.launchUrl() << std::endl;
    if (open_ && !platform::openInBrowser(host.launchUrl())) {
        streams.err << "no browser can be started; open the address above in one" << std::endl;
    }
    signals.wait();
    host.stop();
    return exitSuccess;
}

}  // namespace tandril::cli
