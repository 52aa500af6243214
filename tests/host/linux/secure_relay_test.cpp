// The enterprise server over https: whose certificate counts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "host/running_host.h"
#include "support/temporary_home.h"

namespace tandril::test {
namespace {

template <auto release>
struct Free {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};
using Key = std::unique_ptr<EVP_PKEY, Free<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Free<X509_free>>;

void check(bool good, const char* what) {
    if (!good) throw std::runtime_error(std::string("OpenSSL cannot ") + what);
}

constexpr long day = 24 * 60 * 60;

// Whom a certificate, signed by itself, is for ("IP:127.0.0.1"), and until when, in seconds from
// now.
struct Claim {
    std::string subject = "IP:127.0.0.1";
    long ends = day;
};

Certificate certify(const Claim& claim, EVP_PKEY* key) {
    Certificate certificate(X509_new());
    X509* raw = certificate.get();
    X509_set_version(raw, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(raw), 1);
    X509_gmtime_adj(X509_getm_notBefore(raw), -2 * day);
    X509_gmtime_adj(X509_getm_notAfter(raw), claim.ends);
    X509_set_pubkey(raw, key);
    X509_NAME* name = X509_get_subject_name(raw);
    const auto* text = reinterpret_cast<const unsigned char*>("enterprise server of a test");
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8, text, -1, -1, 0);
    X509_set_issuer_name(raw, name);
    const std::unique_ptr<X509_EXTENSION, Free<X509_EXTENSION_free>> subject(
        X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, claim.subject.c_str()));
    check(subject && X509_add_ext(raw, subject.get(), -1) == 1, "name a subject");
    check(X509_sign(raw, key, EVP_sha256()) != 0, "sign a certificate");
    return certificate;
}

// An enterprise server with such a certificate on a free port of 127.0.0.1.
class SecureServer {
  public:
    explicit SecureServer(const Claim& claim)
        : key_(EVP_EC_gen("P-256")),
          certificate_(certify(claim, key_.get())),
          server_(certificate_.get(), key_.get()) {
        server_.Get("/orders", [](const httplib::Request&, httplib::Response& response) {
            response.set_content("<a/>", "application/xml");
        });
        port_ = server_.bind_to_any_port("127.0.0.1");
        check(port_ > 0, "listen");
        thread_ = std::thread([this] { server_.listen_after_bind(); });
    }
    ~SecureServer() {
        server_.stop();
        thread_.join();
    }
    SecureServer(const SecureServer&) = delete;
    SecureServer& operator=(const SecureServer&) = delete;

    std::string url() const { return "https://127.0.0.1:" + std::to_string(port_); }

    // The certificate as a file of those that are trusted.
    void writeCertificate(const std::string& path) const {
        const std::unique_ptr<BIO, Free<BIO_free_all>> file(BIO_new_file(path.c_str(), "w"));
        check(file && PEM_write_bio_X509(file.get(), certificate_.get()) == 1, "write a file");
    }

  private:
    Key key_;
    Certificate certificate_;
    httplib::SSLServer server_;
    int port_ = -1;
    std::thread thread_;
};

// The system trusts the certificates that a test says, and no others.
class SecureRelay : public testing::Test {
  protected:
    SecureRelay() {
        folder_.write("trusted.pem", "");
        ::setenv("SSL_CERT_FILE", trusted().c_str(), 1);
        ::setenv("SSL_CERT_DIR", folder_.pathOf("none").c_str(), 1);
    }
    ~SecureRelay() override {
        ::unsetenv("SSL_CERT_FILE");
        ::unsetenv("SSL_CERT_DIR");
    }

    std::string trusted() const { return folder_.pathOf("trusted.pem"); }

    // What the page gets from a host that asks this server.
    static std::string answerFrom(const SecureServer& server) {
        host::HostSettings settings;
        settings.enterpriseUrl = server.url();
        RunningHost host(settings);
        const RawResponse response = host.get("/enterprise/orders");
        return std::to_string(response.status()) + " " + response.body;
    }

    static constexpr const char* refusal = "502 the enterprise server has no valid certificate\n";

  private:
    TemporaryHome folder_;
};

TEST_F(SecureRelay, TrustedCertificate) {
    const SecureServer server({});
    server.writeCertificate(trusted());
    EXPECT_EQ(answerFrom(server), "200 <a/>");
}

TEST_F(SecureRelay, CertificateThatNobodyVouchesFor) {
    const SecureServer server({});
    EXPECT_EQ(answerFrom(server), refusal);
}

TEST_F(SecureRelay, TrustedCertificateOfAnotherServer) {
    const SecureServer server({.subject = "IP:127.0.0.2"});
    server.writeCertificate(trusted());
    EXPECT_EQ(answerFrom(server), refusal);
}

TEST_F(SecureRelay, TrustedCertificateThatIsOutOfDate) {
    const SecureServer server({.ends = -day});
    server.writeCertificate(trusted());
    EXPECT_EQ(answerFrom(server), refusal);
}

}  // namespace
}  // namespace tandril::test
