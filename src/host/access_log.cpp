#include "host/access_log.h"

#include <array>
#include <ctime>
#include <ostream>
#include <syncstream>

#include "platform/local_time.h"

namespace tandril::host {
namespace {

constexpr std::size_t longestPath = 200;

// Text from outside must not end the line or move the cursor.
std::string printable(std::string_view text) {
    std::string plain(text.substr(0, longestPath));
    for (char& c : plain) {
        if (static_cast<unsigned char>(c) <= ' ' || static_cast<unsigned char>(c) >= 0x7F) {
            c = '?';
        }
    }
    return plain.empty() ? "-" : plain;
}

std::string now() {
    const std::tm parts = platform::localTime(std::time(nullptr));
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S ", &parts)};
}

}  // namespace

void AccessLog::write(const Request& request, const Response& response) {
    std::osyncstream(out_) << now() << logLine(request, response, tokens_) << std::endl;
}

std::string logLine(const Request& request, const Response& response, const Tokens& tokens) {
    std::string line = printable(request.method) + ' ' +
                       printable(tokens.redact(std::string(request.rawPath()))) + ' ' +
                       std::to_string(response.status);
    if (response.status >= 400 && response.contentType.starts_with("text/plain")) {
        line += ' ' + response.body.substr(0, response.body.find('\n'));
    }
    return tokens.redact(line);
}

}  // namespace tandril::host
