#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "cli/program.h"
#include "platform/windows/wide.h"

namespace {

// The console's code pages, which outlive the program, are UTF-8 while it runs.
class Utf8Console {
  public:
    Utf8Console() : input_(::GetConsoleCP()), output_(::GetConsoleOutputCP()) {
        ::SetConsoleCP(CP_UTF8);
        ::SetConsoleOutputCP(CP_UTF8);
    }
    ~Utf8Console() {
        ::SetConsoleCP(input_);
        ::SetConsoleOutputCP(output_);
    }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

  private:
    UINT input_;
    UINT output_;
};

// The streams carry lines that end as they are written, as on every other system.
void prepareStreams() {
    for (std::FILE* stream : {stdin, stdout, stderr}) {
        ::_setmode(::_fileno(stream), _O_BINARY);
    }
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const Utf8Console console;
    prepareStreams();
    std::vector<std::string> words;
    for (int i = 0; i < argc; ++i) {
        words.push_back(tandril::platform::toUtf8(argv[i]));
    }
    std::vector<const char*> pointers;
    for (const std::string& word : words) {
        pointers.push_back(word.c_str());
    }
    return tandril::cli::runProgram(argc, pointers.data(), {std::cin, std::cout, std::cerr});
}
