#include "surface/json_call.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "surface/client_on_new_machine.h"
#include "surface/json_text.h"

namespace tandril::surface {
namespace {

const std::string getDetailsSignature =
    "GetDetails(iObject: string, iOrno: string, iAcln: string, iLine: string, iXML: string, "
    "iError: 16-bit integer) -> string";
const std::string deleteNodeSignature =
    "deleteNode(iorder: variant, iActivity: variant, iLine: variant, iCostType: variant) -> "
    "variant";

class JsonCall : public testing::Test {
  protected:
    Answer answer(const std::string& method, const std::string& arguments) {
        return call(home_.client(), method, parseJson(arguments));
    }

    // The text of an answer to arguments that the method must not take.
    std::string refusal(const std::string& method, const std::string& arguments) {
        const Answer result = answer(method, arguments);
        EXPECT_EQ(result.outcome, Outcome::BadArguments) << result.body;
        return result.body.value("invalid", "");
    }

    test::ClientOnNewMachine home_;
};

TEST_F(JsonCall, UnknownMethod) {
    const Answer result = answer("NoSuchMethod", "[]");
    EXPECT_EQ(result.outcome, Outcome::UnknownMethod);
    EXPECT_EQ(toLine(result.body), R"({"invalid":"unknown method: NoSuchMethod"})");
}

TEST_F(JsonCall, ArgumentsThatAreNoArray) {
    for (const char* arguments : {"{}", "null", "\"x\"", "1"}) {
        EXPECT_EQ(refusal("ListOrders", arguments),
                  "the arguments must be a JSON array: ListOrders() -> string");
    }
}

TEST_F(JsonCall, TooFewAndTooManyArguments) {
    EXPECT_EQ(refusal("ListOrders", "[\"\"]"), "wrong number of arguments: ListOrders() -> string");
    EXPECT_EQ(refusal("getdetails", R"(["1","A1","","",""])"),
              "wrong number of arguments: " + getDetailsSignature);
}

TEST_F(JsonCall, StringTakesAStringOnly) {
    for (const char* value : {"1", "null", "true", "[]", "{}"}) {
        EXPECT_EQ(refusal("GetDetails", R"(["1",)" + std::string(value) + R"(,"","","",0])"),
                  "wrong kind of argument iOrno: " + getDetailsSignature);
    }
}

TEST_F(JsonCall, IntegerTakesAWholeNumberInItsRangeOnly) {
    for (const char* value : {"\"0\"", "null", "true", "0.0", "1e0", "32768", "-32769",
                              "18446744073709551615", "-9223372036854775808", "[]"}) {
        EXPECT_EQ(refusal("GetDetails", R"(["1","","","","",)" + std::string(value) + "]"),
                  "wrong kind of argument iError: " + getDetailsSignature)
            << value;
    }
}

TEST_F(JsonCall, IntegerTakesBothEndsOfItsRange) {
    for (const char* value : {"32767", "-32768", "-0"}) {
        const Answer result =
            answer("GetDetails", R"(["9","","","","",)" + std::string(value) + "]");
        EXPECT_NE(result.outcome, Outcome::BadArguments) << value;
    }
}

TEST_F(JsonCall, VariantTakesAnyPlainValue) {
    for (const char* value : {"\"A1\"", "1", "1.5", "true", "null"}) {
        const Answer result = answer("deleteNode", "[\"\",\"\",\"\"," + std::string(value) + "]");
        EXPECT_NE(result.outcome, Outcome::BadArguments) << value;
    }
}

TEST_F(JsonCall, VariantTakesNoArrayOrObject) {
    for (const char* value : {"[]", "{}"}) {
        EXPECT_EQ(refusal("deleteNode", "[\"\",\"\"," + std::string(value) + ",\"\"]"),
                  "wrong kind of argument iLine: " + deleteNodeSignature);
    }
}

TEST(JsonResult, ValueOfEachKind) {
    const Method& method = *findMethod("ListOrders");
    EXPECT_EQ(toLine(resultBody(method, Value(), {})), R"({"result":null})");
    EXPECT_EQ(toLine(resultBody(method, Value(true), {})), R"({"result":true})");
    EXPECT_EQ(toLine(resultBody(method, Value(std::int16_t{-4}), {})), R"({"result":-4})");
    EXPECT_EQ(toLine(resultBody(method, Value("<a/>"), {})), R"({"result":"<a/>"})");
}

TEST(JsonResult, ByReferenceParametersFollow) {
    const std::vector<Value> arguments{Value(std::int16_t{4}), Value("ccsocservclabr")};
    EXPECT_EQ(toLine(resultBody(*findMethod("getColumnHeadingsForHRA"), Value("<COL>"), arguments)),
              R"({"result":"<COL>","out":{"iCols":4}})");
}

}  // namespace
}  // namespace tandril::surface
