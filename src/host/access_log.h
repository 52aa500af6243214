#pragma once

#include <iosfwd>
#include <string>

#include "host/http_message.h"
#include "host/tokens.h"

namespace tandril::host {

// One line per request: time, method, path, status, and the reason of a refusal. The query is left
// out and tokens are blanked. Safe for concurrent use, and beside others that write whole lines to
// the same stream.
class AccessLog {
  public:
    // Both must outlive the log.
    AccessLog(std::ostream& out, const Tokens& tokens) : out_(out), tokens_(tokens) {}

    void write(const Request& request, const Response& response);

  private:
    std::ostream& out_;
    const Tokens& tokens_;
};

// The line without its time and its end.
std::string logLine(const Request& request, const Response& response, const Tokens& tokens);

}  // namespace tandril::host
