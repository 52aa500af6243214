#pragma once

#include <atomic>
#include <string>
#include <string_view>

// The secrets by which the host knows its page.
namespace tandril::host {

// 64 hexadecimal digits (256 bits) from the system's random generator. Throws Fault when it has
// none.
std::string randomToken();

// Whether the texts are equal, in a time that does not tell how much of them is.
bool equalInConstantTime(std::string_view a, std::string_view b);

// What one host hands out. Safe for concurrent use.
class Tokens {
  public:
    // New random ones. Throws Fault.
    Tokens() : Tokens(randomToken(), randomToken(), randomToken()) {}
    // Known ones, for tests.
    Tokens(std::string launch, std::string session, std::string csrf);

    const std::string& launch() const { return launch_; }
    const std::string& session() const { return session_; }
    const std::string& csrf() const { return csrf_; }

    bool isSession(std::string_view token) const { return equalInConstantTime(token, session_); }
    bool isCsrf(std::string_view token) const { return equalInConstantTime(token, csrf_); }

    // Uses the launch token up. Returns false, and uses nothing up, when it is another token or
    // was used before.
    bool redeemLaunch(std::string_view token);

    // The text with "[token]" in place of each token.
    std::string redact(std::string text) const;

  private:
    std::string launch_;
    std::string session_;
    std::string csrf_;
    std::atomic<bool> redeemed_ = false;
};

}  // namespace tandril::host
