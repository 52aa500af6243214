#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support/temporary_home.h"

namespace tandril::test {

// How a program ended.
struct ProcessEnd {
    int status = -1;  // exit status; -1 when a signal ended the program
    int signal = 0;   // that signal
};

struct ProcessResult {
    ProcessEnd end;
    std::string output;
    std::string errors;
};

// Runs a program to its end with `input` on its standard input. An `outputFile` takes the standard
// output in place of the result.
ProcessResult runProcess(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments, std::string_view input = {},
                         const std::filesystem::path& outputFile = {});

// A program that runs beside the test. It is killed at the end of the test if it still runs.
class Process {
  public:
    Process(const std::filesystem::path& program, const std::vector<std::string>& arguments);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t id() const { return id_; }

    void write(std::string_view text);
    void closeInput();
    // Stops listening to the standard output: the program writes into a closed pipe then.
    void closeOutput();

    // The next line of the standard output, without its end. Throws when none comes in 10 seconds.
    std::string readLine();

    // What came out on the standard error so far.
    std::string errors() const;

    void send(int signal) const;

    // Waits for the end. Throws when it does not come in 10 seconds.
    ProcessEnd wait();

  private:
    TemporaryHome folder_;
    pid_t id_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::string buffer_;
};

}  // namespace tandril::test
