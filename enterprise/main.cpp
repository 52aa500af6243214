// tandril-enterprise: the sample enterprise server as a program.

#include <CLI/CLI.hpp>
#include <array>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <optional>
#include <thread>

#include "enterprise/web_server.h"

namespace {

using tandril::enterprise::Language;
using tandril::enterprise::languageOfTag;
using tandril::enterprise::Office;
using tandril::enterprise::SampleFolder;
using tandril::enterprise::WebServer;

struct Options {
    int port = 8730;
    std::string samples = "samples";
    std::string language = "en";
    std::optional<std::filesystem::path> data;
};

std::string localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    std::array<char, 16> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y%m%d %H%M%S", &local);
    return {text.data(), length};
}

// Serves until SIGINT or SIGTERM, which a thread of their own waits for.
void serve(const Options& options) {
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGINT);
    sigaddset(&ends, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);

    const Language language = languageOfTag(options.language).value_or(Language::English);
    Office office(SampleFolder(options.samples), options.data, localTime, language);
    WebServer server(office, language);
    const int port = server.bind(options.port);
    std::cout << "http://127.0.0.1:" << port << std::endl;

    std::jthread stopper([&server, &ends] {
        int signal = 0;
        sigwait(&ends, &signal);
        server.stop();
    });
    server.run();
    // Should run() have ended by itself, the other thread still waits.
    pthread_kill(stopper.native_handle(), SIGINT);
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app("Sample enterprise server: hands out orders, takes uploads. Loopback only.");
    app.add_option("--port", options.port, "Port to listen on, 0 for any free one")
        ->capture_default_str()
        ->check(CLI::Range(0, 65535));
    app.add_option("--samples", options.samples, "Folder of the sample data")
        ->capture_default_str()
        ->check(CLI::ExistingDirectory);
    app.add_option("--data", options.data,
                   "Folder of the server's memory; without it none is kept");
    app.add_option("--language", options.language, "Language of clients that name none: en, de, nl")
        ->capture_default_str()
        ->check(CLI::IsMember({"en", "de", "nl"}));
    CLI11_PARSE(app, argc, argv);
    try {
        serve(options);
    } catch (const std::exception& failure) {
        std::cerr << "tandril-enterprise: " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
