#include "surface/json_request.h"

#include <gtest/gtest.h>

#include <string>

#include "surface/client_on_new_machine.h"

namespace tandril::surface {
namespace {

class JsonRequest : public testing::Test {
  protected:
    std::string answer(const std::string& line) { return answerLine(home_.client(), line); }

    test::ClientOnNewMachine home_;
};

TEST_F(JsonRequest, EmptyLineIsNotJson) {
    EXPECT_EQ(answer(""), "{\"invalid\":\"not JSON at byte 1\"}\n");
}

TEST_F(JsonRequest, OtherThanAnObject) {
    for (const char* line : {"[]", "\"x\"", "1", "null"}) {
        EXPECT_EQ(answer(line), "{\"invalid\":\"the request is not a JSON object\"}\n") << line;
    }
}

TEST_F(JsonRequest, WithoutAMethodName) {
    for (const char* line : {"{}", R"({"method":1,"args":[]})", R"({"Method":"ListOrders"})"}) {
        EXPECT_EQ(answer(line),
                  "{\"invalid\":\"the request has no \\\"method\\\" that is a string\"}\n")
            << line;
    }
}

TEST_F(JsonRequest, WithoutArguments) {
    EXPECT_EQ(answer(R"({"method":"ListOrders"})"),
              "{\"invalid\":\"the request has no \\\"args\\\"\"}\n");
}

TEST_F(JsonRequest, IdOfAnyKindComesBack) {
    for (const std::string id : {"7", "\"x\"", "null", "1.5", "{\"b\":1,\"a\":[true]}"}) {
        EXPECT_EQ(answer(R"({"method":"NoSuchMethod","args":[],"id":)" + id + "}").substr(0, 43),
                  "{\"invalid\":\"unknown method: NoSuchMethod\",\"")
            << id;
    }
    EXPECT_EQ(answer(R"({"id":{"a":[true],"b":1},"method":"NoSuchMethod","args":[]})"),
              "{\"invalid\":\"unknown method: NoSuchMethod\",\"id\":{\"a\":[true],\"b\":1}}\n");
}

TEST_F(JsonRequest, IdComesBackFromAnObjectThatIsNoRequest) {
    EXPECT_EQ(answer(R"({"id":7})"),
              "{\"invalid\":\"the request has no \\\"method\\\" that is a string\",\"id\":7}\n");
}

TEST_F(JsonRequest, MembersThatMeanNothingAreLeftOut) {
    EXPECT_EQ(answer(R"({"method":"NoSuchMethod","args":[],"jsonrpc":"2.0"})"),
              "{\"invalid\":\"unknown method: NoSuchMethod\"}\n");
}

TEST_F(JsonRequest, CarriageReturnAtTheEndIsTolerated) {
    EXPECT_EQ(answer("{\"method\":\"NoSuchMethod\",\"args\":[]}\r"),
              "{\"invalid\":\"unknown method: NoSuchMethod\"}\n");
}

}  // namespace
}  // namespace tandril::surface
