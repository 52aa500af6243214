#include "support/process.h"

#include "support/read_file.h"

namespace tandril::test {

ProcessResult runProcess(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments, std::string_view input,
                         const std::filesystem::path& outputFile) {
    const TemporaryHome folder;
    folder.write("input", input);
    const bool isKept = !outputFile.empty();
    const StreamFiles files{folder.pathOf("input"),
                            isKept ? outputFile.string() : folder.pathOf("output"),
                            folder.pathOf("errors")};
    const ProcessEnd end = runOnFiles(program, arguments, files);
    return {end, isKept ? "" : readFile(files.output), readFile(files.errors)};
}

std::string Process::readLine() {
    const auto deadline = std::chrono::steady_clock::now() + processPatience;
    std::size_t length = 0;
    while ((length = buffer_.find('\n')) == std::string::npos) {
        receive(deadline);
    }
    std::string line = buffer_.substr(0, length);
    buffer_.erase(0, length + 1);
    return line;
}

std::string Process::errors() const {
    return readFile(folder_.pathOf("errors"));
}

}  // namespace tandril::test
