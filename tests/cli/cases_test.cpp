#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "support/process.h"
#include "support/read_file.h"
#include "support/temporary_home.h"

// Runs the program on the cases in the folder data/. The files of a case:
//
//   arguments  one argument a line; {home} stands for an empty home, {nowhere} for a missing one
//   input      the standard input (none: empty)
//   output     the expected standard output (none: empty)
//   errors     the expected standard error (none: empty)
//   status     the expected exit status (none: 0)
namespace tandril::test {
namespace {

namespace fs = std::filesystem;

struct Case {
    fs::path folder;

    std::string file(const char* name) const {
        return fs::exists(folder / name) ? readFile(folder / name) : std::string();
    }
    int status() const {
        const std::string text = file("status");
        return text.empty() ? 0 : std::stoi(text);
    }
};

// For the name of a test and for what it prints.
std::string nameOf(const testing::TestParamInfo<Case>& info) {
    return info.param.folder.filename().string();
}

void PrintTo(const Case& value, std::ostream* out) {
    *out << value.folder.filename();
}

std::vector<Case> cases() {
    std::vector<Case> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(TANDRIL_CLI_CASES)) {
        found.push_back({entry.path()});
    }
    std::ranges::sort(found, {}, &Case::folder);
    return found;
}

void replaceAll(std::string& text, const std::string& word, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; at += by.size()) {
        text.replace(at, word.size(), by);
    }
}

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> found;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        found.push_back(line);
    }
    return found;
}

class ProgramCase : public testing::TestWithParam<Case> {};

TEST_P(ProgramCase, AnswersAsExpected) {
    const TemporaryHome home;
    std::string arguments = GetParam().file("arguments");
    replaceAll(arguments, "{home}", home.path());
    replaceAll(arguments, "{nowhere}", home.pathOf("nowhere"));

    const ProcessResult result =
        runProcess(TANDRIL_PROGRAM, lines(arguments), GetParam().file("input"));

    EXPECT_EQ(result.output, GetParam().file("output"));
    EXPECT_EQ(result.errors, GetParam().file("errors"));
    EXPECT_EQ(result.end.status, GetParam().status());
}

INSTANTIATE_TEST_SUITE_P(Cases, ProgramCase, testing::ValuesIn(cases()), nameOf);

}  // namespace
}  // namespace tandril::test
