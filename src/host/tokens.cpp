#include "host/tokens.h"

#include <array>
#include <utility>

#include "platform/fault.h"
#include "platform/random_bytes.h"

namespace tandril::host {

std::string randomToken() {
    std::array<unsigned char, 32> bytes{};
    if (!platform::fillRandom(bytes)) {
        throw Fault("the system has no random numbers for the access tokens");
    }
    std::string token;
    for (const unsigned char byte : bytes) {
        constexpr std::string_view digits = "0123456789abcdef";
        token += digits[byte >> 4U];
        token += digits[byte & 0xFU];
    }
    return token;
}

bool equalInConstantTime(std::string_view a, std::string_view b) {
    // The length of a token is no secret.
    if (a.size() != b.size()) {
        return false;
    }
    unsigned difference = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        // Volatile, so that the compiler cannot leave the loop early.
        const volatile auto x = static_cast<unsigned char>(a[i]);
        const volatile auto y = static_cast<unsigned char>(b[i]);
        difference |= static_cast<unsigned>(x ^ y);
    }
    return difference == 0;
}

Tokens::Tokens(std::string launch, std::string session, std::string csrf)
    : launch_(std::move(launch)), session_(std::move(session)), csrf_(std::move(csrf)) {}

bool Tokens::redeemLaunch(std::string_view token) {
    return equalInConstantTime(token, launch_) && !redeemed_.exchange(true);
}

std::string Tokens::redact(std::string text) const {
    for (const std::string* token : {&launch_, &session_, &csrf_}) {
        for (std::size_t at = 0; (at = text.find(*token, at)) != std::string::npos;) {
            text.replace(at, token->size(), "[token]");
        }
    }
    return text;
}

}  // namespace tandril::host
