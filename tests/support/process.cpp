#include "support/process.h"

#include "support/read_file.h"

namespace tandril::test {

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
