// Whole days as they were once recorded: a home folder, the calls made on it with their answers,
// and what the files and tables hold at the end. tests/days/cases/ has a JSON file for each.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "days/comparison.h"
#include "days/recorded_home.h"

namespace tandril::test {
namespace {

using nlohmann::json;

std::vector<std::string> dayNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(TANDRIL_DAYS)) {
        names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Days : public testing::TestWithParam<std::string> {};

TEST_P(Days, GoesAsRecorded) {
    std::ifstream file(std::filesystem::path(TANDRIL_DAYS) / (GetParam() + ".json"));
    const json day = json::parse(file);
    RecordedHome home(day);
    bool isAfterFault = false;
    for (std::size_t i = 0; i < day["steps"].size(); ++i) {
        const json& step = day["steps"][i];
        const auto answer = home.run(step);
        if (!answer) {
            continue;
        }
        const std::string method = step["method"];
        if (method != "Get_Error" && method != "GetVariable") {
            isAfterFault = step["answer"].contains("fault");
        }
        ASSERT_EQ(compareAnswer(step, *answer, isAfterFault), "")
            << "step " << i + 1 << ": " << method << step["args"].dump().substr(0, 200);
    }
    EXPECT_EQ(home.compareWithEnd(day), "");
}

INSTANTIATE_TEST_SUITE_P(Recorded, Days, testing::ValuesIn(dayNames()), [](const auto& day) {
    std::string name = day.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

// The comparison itself must be able to see a difference.
TEST(Comparison, SeesDifferencesThatMatter) {
    EXPECT_EQ(compareXml("<?xml version='1.0'?><a b='1' c='2'> <d/></a>",
                         "<a c=\"2\" b=\"1\"><d></d></a>"),
              "");
    EXPECT_NE(compareXml("<a b='1'/>", "<a b='2'/>"), "");
    EXPECT_NE(compareXml("<a><b/><c/></a>", "<a><c/><b/></a>"), "");
    EXPECT_NE(compareXml("<a/>", "<a>"), "");
    EXPECT_NE(compareText("a", "ab"), "");
    const std::string header = "|--------- Logged On:  <TIME>  For User Action: X  ----------\r\n";
    const std::string dated =
        "|--------- Logged On:  15/11/2026 11:59:39  For User Action: X  ----------\r\n";
    EXPECT_EQ(compareLog(header + "Error =   <DBFAULT>\r\nError =   b\r\n",
                         dated + "Error =   one\r\nError =   two\r\nError =   b\r\n"),
              "");
    EXPECT_NE(compareLog(header + "Error =   <DBFAULT>\r\n", dated), "");
    EXPECT_NE(compareLog(header, dated + "Error =   a\r\n"), "");
    EXPECT_NE(compareLog(header + "Error =   a\r\n", dated + "Error =   b\r\n"), "");
}

TEST(Comparison, SeesDifferentAnswers) {
    const json step{{"method", "Get_Error"}, {"args", json::array()}, {"answer", {{"result", ""}}}};
    EXPECT_EQ(compareAnswer(step, {{"result", ""}}, false), "");
    EXPECT_NE(compareAnswer(step, {{"result", "1"}}, false), "");
    EXPECT_EQ(compareAnswer(step, {{"result", "1"}}, true), "");
    EXPECT_NE(compareAnswer(step, {{"result", nullptr}}, true), "");
    EXPECT_NE(compareAnswer(step, {{"fault", "x"}}, true), "");
}

}  // namespace
}  // namespace tandril::test
