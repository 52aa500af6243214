// The sample enterprise server over real connections: what it hands out and whom it refuses.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "enterprise/office_fixture.h"
#include "enterprise/running_server.h"

namespace tandril::enterprise {
namespace {

using testing::HasSubstr;

class EnterpriseServer : public testing::Test {
  protected:
    Office office_ = sampleOffice();
    RunningServer server_{office_};
};

TEST_F(EnterpriseServer, TellsThatItIsThere) {
    const auto answer = server_.get("/health");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, "ok\n");
}

TEST_F(EnterpriseServer, HandsOutTheSampleOrdersByteForByte) {
    const auto answer = server_.get("/orders");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.get_header_value("Content-Type"), "application/xml; charset=utf-8");
    EXPECT_EQ(answer.get_header_value("Cache-Control"), "no-store");
    EXPECT_EQ(answer.body, sampleText("orders.xml"));
    EXPECT_THAT(answer.body, HasSubstr("Bäckerei Krüger"));
}

TEST_F(EnterpriseServer, HandsOutTheChangesOfTheMasterData) {
    EXPECT_EQ(server_.get("/masterdata").body, sampleText("masterdata/extract.xml"));
}

TEST_F(EnterpriseServer, HandsOutTheFieldMapperInEnglishWithoutAWish) {
    const auto answer = server_.get("/fieldmapper");
    EXPECT_EQ(answer.body, sampleText("fieldmapper-en.xml"));
    EXPECT_EQ(answer.get_header_value("Content-Language"), "en");
}

TEST_F(EnterpriseServer, HandsOutTheFieldMapperInTheBrowsersLanguage) {
    const auto english = server_.get("/fieldmapper", {{"Accept-Language", "fr, de-AT;q=0.9, en"}});
    EXPECT_EQ(english.get_header_value("Content-Language"), "en");
    const auto dutch =
        server_.get("/fieldmapper", {{"Accept-Language", "nl-NL,nl;q=0.9,en;q=0.8"}});
    EXPECT_EQ(dutch.body, sampleText("fieldmapper-nl.xml"));
}

TEST_F(EnterpriseServer, ALanguageInTheQueryGoesBeforeTheBrowsers) {
    const auto answer = server_.get("/fieldmapper?language=de", {{"Accept-Language", "nl"}});
    EXPECT_EQ(answer.body, sampleText("fieldmapper-de.xml"));
}

TEST_F(EnterpriseServer, AnswersAnUploadWithItsReport) {
    const std::string text = upload(
        {{"ordr", R"(<record ServiceOrder="100201"><OrderStatus>15</OrderStatus></record>)"}});
    const auto answer = server_.post("/upload", text);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.get_header_value("Content-Type"), "application/xml; charset=utf-8");
    EXPECT_THAT(ownEntries(answer.body), testing::ElementsAre("Completed 100201//"));
    EXPECT_EQ(server_.post("/upload", text).body, answer.body);
    EXPECT_NE(server_.get("/orders").body, sampleText("orders.xml"));
}

TEST_F(EnterpriseServer, TakesAnUploadInAnotherEncoding) {
    const auto answer =
        server_.post("/upload",
                     "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><harbrook><ccsocservcordr>"
                     "<record ServiceOrder=\"_1\"><OrderStatus>15</OrderStatus>"
                     "<Description>K\xfchlung</Description></record></ccsocservcordr></harbrook>");
    EXPECT_EQ(answer.status, 200);
    EXPECT_STREQ(Download(server_.get("/orders").body).order("100223").child_value("Description"),
                 "Kühlung");
}

// Command line tools label what they send as a form unless told otherwise.
TEST_F(EnterpriseServer, TakesALongUploadWhateverItIsLabelledAs) {
    const std::string text =
        upload({{"ordr", R"(<record ServiceOrder="_1"><OrderStatus>15</OrderStatus><OrderText>)" +
                             std::string(100'000, 'x') + "</OrderText></record>"}});
    httplib::Client client("127.0.0.1", server_.port());
    bePatient(client);
    const auto answer = client.Post("/upload", text, "application/x-www-form-urlencoded");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    EXPECT_THAT(ownEntries(answer->body), testing::ElementsAre("Completed _1//"));
}

TEST_F(EnterpriseServer, RefusesAnUploadAboveTheLimit) {
    httplib::Client client("127.0.0.1", server_.port());
    bePatient(client);
    const auto answer = client.Post("/upload", std::string((64U << 20) + 1, 'x'), "text/plain");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 413);
    EXPECT_EQ(answer->body, "The body is too long.\n");
}

TEST_F(EnterpriseServer, RefusesAForm) {
    httplib::Client client("127.0.0.1", server_.port());
    bePatient(client);
    const auto answer = client.Post("/upload", {{"file", "<harbrook/>", "a.xml", "text/xml"}});
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 415);
}

TEST_F(EnterpriseServer, RefusesAnUploadThatIsNone) {
    const auto broken = server_.post("/upload", "<harbrook>");
    EXPECT_EQ(broken.status, 400);
    EXPECT_EQ(broken.body, "The upload is not a well-formed XML document.\n");
    EXPECT_EQ(server_.post("/upload", "<UploadReport/>").body,
              "The upload is not a document of service orders.\n");
    EXPECT_EQ(server_.post("/upload", "").status, 400);
}

TEST_F(EnterpriseServer, AnswersAnUploadInTheBrowsersLanguage) {
    const auto answer = server_.post("/upload", upload({{"ordr", R"(<record ServiceOrder="9"/>)"}}),
                                     {{"Accept-Language", "nl"}});
    EXPECT_THAT(ownEntries(answer.body),
                testing::ElementsAre("Error 9// Het kantoor kent deze order niet."));
}

TEST(EnterpriseServerFailure, OfSavingIsToldAndNothingIsTaken) {
    const TemporaryFolder folder;
    Office office = sampleOffice(folder.path());
    RunningServer server(office);
    std::filesystem::remove_all(folder.path());
    const auto answer = server.post("/upload", upload({}));
    EXPECT_EQ(answer.status, 500);
    EXPECT_THAT(answer.body, HasSubstr("enterprise.xml"));
    EXPECT_EQ(server.get("/orders").body, sampleText("orders.xml"));
}

TEST_F(EnterpriseServer, AnUnknownPathIsNotFound) {
    const auto answer = server_.get("/secrets");
    EXPECT_EQ(answer.status, 404);
    EXPECT_EQ(answer.body, "There is no GET /secrets.\n");
}

TEST_F(EnterpriseServer, RefusesPagesOfOtherSites) {
    EXPECT_EQ(server_.get("/orders", {{"Origin", "http://evil.example"}}).status, 403);
    EXPECT_EQ(server_.get("/orders", {{"Host", "evil.example:80"}}).status, 403);
    EXPECT_EQ(server_.get("/orders", {{"Host", "localhost:80"}}).status, 200);
}

TEST_F(EnterpriseServer, APortThatIsTakenIsRefused) {
    WebServer second(office_, Language::English);
    EXPECT_THROW(second.bind(server_.port()), std::runtime_error);
}

TEST(EnterpriseServerStop, BeforeTheStartKeepsTheServerFromStarting) {
    Office office = sampleOffice();
    WebServer server(office, Language::German);
    const int port = server.bind(0);
    server.stop();
    server.run();
    httplib::Client client("127.0.0.1", port);
    client.set_read_timeout(std::chrono::milliseconds(100));
    EXPECT_FALSE(client.Get("/health"));
}

TEST(EnterpriseServerLanguage, OfTheServerServesClientsThatNameNone) {
    Office office = sampleOffice();
    RunningServer server(office, Language::German);
    EXPECT_EQ(server.get("/fieldmapper").body, sampleText("fieldmapper-de.xml"));
    EXPECT_EQ(server.get("/fieldmapper", {{"Accept-Language", "fr"}}).body,
              sampleText("fieldmapper-de.xml"));
}

TEST(SampleFolderOfTheServer, NamesTheFileThatIsMissing) {
    try {
        SampleFolder folder("/nonexistent");
        FAIL() << "a missing folder was taken";
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ(failure.what(), "Cannot read the sample file /nonexistent/fieldmapper-en.xml");
    }
}

TEST(SampleFolderOfTheServer, KnowsTheItemsThatTheExtractAdds) {
    const SampleFolder folder(TANDRIL_SAMPLES_DIR);
    EXPECT_TRUE(folder.masterTables().has("SERVICEITEMS", {{"ITEM", "FLT-400"}}));
    EXPECT_TRUE(folder.masterTables().has("SERVICEITEMS", {{"ITEM", "FLT-200"}}));
    EXPECT_FALSE(folder.masterTables().has("SERVICEITEMS", {{"ITEM", "FLT-3OO"}}));
}

}  // namespace
}  // namespace tandril::enterprise
