#include "host/enterprise_url.h"

#include <gtest/gtest.h>

#include "platform/fault.h"

namespace tandril::host {
namespace {

TEST(EnterpriseUrl, ComesApart) {
    struct Row {
        const char* url;
        const char* server;
        const char* path;
    };
    for (const Row& row : {Row{"http://a", "http://a", ""}, Row{"http://a/", "http://a", ""},
                           Row{"https://a.example:8443", "https://a.example:8443", ""},
                           Row{"http://127.0.0.1:81/base/x", "http://127.0.0.1:81", "/base/x"},
                           Row{"http://a/base//", "http://a", "/base"},
                           Row{"http://[::1]:81/b", "http://[::1]:81", "/b"}}) {
        const EnterpriseUrl url = parseEnterpriseUrl(row.url);
        EXPECT_EQ(url.server, row.server) << row.url;
        EXPECT_EQ(url.path, row.path) << row.url;
    }
}

TEST(EnterpriseUrl, RefusesWhatIsNoServer) {
    for (const char* url : {"", "a", "a.example:80", "ftp://a", "http://", "http:///x", "http:/a",
                            "HTTP//a", "http://user@a", "http://a?x=1", "http://a#x", "http://a b",
                            "http://a\\b", "http://a\n"}) {
        EXPECT_THROW(parseEnterpriseUrl(url), Fault) << url;
    }
}

}  // namespace
}  // namespace tandril::host
