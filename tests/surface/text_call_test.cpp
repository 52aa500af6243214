#include "surface/text_call.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tandril::surface {
namespace {

const std::string hyperLinkAndZoom =
    "HyperLinkAndZoom(iMode: 16-bit integer, iXmlTag: string, iValue: string, iFormName: string) "
    "-> string";

struct Refusal {
    Outcome outcome = Outcome::Result;
    std::string text;
};

Refusal refusal(const std::string& method, const std::vector<std::string>& arguments) {
    try {
        const TextCall call(method, arguments);
    } catch (const InvalidCall& invalid) {
        return {invalid.outcome(), invalid.what()};
    }
    return {};
}

TEST(TextCall, UnknownMethod) {
    const Refusal result = refusal("NoSuchMethod", {});
    EXPECT_EQ(result.outcome, Outcome::UnknownMethod);
    EXPECT_EQ(result.text, "unknown method: NoSuchMethod");
}

TEST(TextCall, TooFewAndTooManyArguments) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"1", "2", "3", "4", "5"}}) {
        const Refusal result = refusal("hyperlinkandzoom", arguments);
        EXPECT_EQ(result.outcome, Outcome::BadArguments);
        EXPECT_EQ(result.text, "wrong number of arguments: " + hyperLinkAndZoom);
    }
}

TEST(TextCall, IntegerIsReadStrictly) {
    for (const char* number :
         {"", " 1", "1 ", "+1", "1.0", "1e1", "0x1", "one", "32768", "-32769", "--1", "-"}) {
        EXPECT_EQ(refusal("HyperLinkAndZoom", {number, "", "", ""}).text,
                  "wrong kind of argument iMode: " + hyperLinkAndZoom)
            << number;
    }
    for (const char* number : {"0", "-1", "007", "32767", "-32768"}) {
        EXPECT_EQ(refusal("HyperLinkAndZoom", {number, "", "", ""}).outcome, Outcome::Result)
            << number;
    }
}

TEST(TextCall, StringAndVariantMustBeUtf8) {
    EXPECT_EQ(refusal("HyperLinkAndZoom", {"1", "", "\xC3", ""}).text,
              "wrong kind of argument iValue: " + hyperLinkAndZoom);
    EXPECT_EQ(refusal("deleteNode", {"", "", "", "\xFF"}).outcome, Outcome::BadArguments);
    EXPECT_EQ(refusal("deleteNode", {"\xC3\xA4", "-", "--home", ""}).outcome, Outcome::Result);
}

TEST(TextResult, ValueOfEachKind) {
    const Method& method = *findMethod("ListOrders");
    EXPECT_EQ(resultText(method, Value(), {}), "\n");
    EXPECT_EQ(resultText(method, Value(true), {}), "true\n");
    EXPECT_EQ(resultText(method, Value(false), {}), "false\n");
    EXPECT_EQ(resultText(method, Value(std::int16_t{-4}), {}), "-4\n");
    EXPECT_EQ(resultText(method, Value("a\nb"), {}), "a\nb\n");
}

TEST(TextResult, ByReferenceParametersFollow) {
    const std::vector<Value> columns{Value(std::int16_t{4}), Value("ccsocservclabr")};
    EXPECT_EQ(resultText(*findMethod("getColumnHeadingsForHRA"), Value("<COL>"), columns),
              "<COL>\niCols=4\n");
    const std::vector<Value> name{Value("objects")};
    EXPECT_EQ(resultText(*findMethod("SetCurrentmdb"), Value(), name), "\niFName=objects\n");
}

}  // namespace
}  // namespace tandril::surface
