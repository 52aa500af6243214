#include "host/tokens.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace tandril::host {
namespace {

TEST(Tokens, AreLongAndNeverTheSame) {
    std::set<std::string> seen;
    for (int i = 0; i < 100; ++i) {
        const std::string token = randomToken();
        EXPECT_EQ(token.find_first_not_of("0123456789abcdef"), std::string::npos) << token;
        EXPECT_EQ(token.size(), 64U);
        EXPECT_TRUE(seen.insert(token).second);
    }
}

TEST(Tokens, OneHostHasThreeDifferentOnes) {
    const Tokens tokens;
    EXPECT_NE(tokens.launch(), tokens.session());
    EXPECT_NE(tokens.session(), tokens.csrf());
    EXPECT_NE(tokens.csrf(), tokens.launch());
}

TEST(Tokens, CompareAsWhole) {
    EXPECT_TRUE(equalInConstantTime("", ""));
    EXPECT_TRUE(equalInConstantTime("abc", "abc"));
    for (const char* other : {"", "ab", "abcd", "xbc", "abx", "ABC"}) {
        EXPECT_FALSE(equalInConstantTime("abc", other)) << other;
    }
}

TEST(Tokens, LaunchTokenIsGoodOnce) {
    Tokens tokens("launch", "session", "csrf");
    EXPECT_FALSE(tokens.redeemLaunch("wrong!"));
    EXPECT_FALSE(tokens.redeemLaunch("session"));
    EXPECT_FALSE(tokens.redeemLaunch(""));
    EXPECT_TRUE(tokens.redeemLaunch("launch"));
    EXPECT_FALSE(tokens.redeemLaunch("launch"));
}

TEST(Tokens, LaunchTokenIsGoodForOneOfManyThreads) {
    Tokens tokens;
    std::atomic<int> redeemed = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            if (tokens.redeemLaunch(tokens.launch())) {
                ++redeemed;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(redeemed, 1);
}

TEST(Tokens, AreBlankedInText) {
    const Tokens tokens("1111", "2222", "3333");
    EXPECT_EQ(tokens.redact("/1111/2222?x=33331111"), "/[token]/[token]?x=[token][token]");
    EXPECT_EQ(tokens.redact("/index.html"), "/index.html");
}

}  // namespace
}  // namespace tandril::host
