#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/temporary_home.h"

namespace tandril::test {

// How long a program may take for a line or to end. A machine under load is slow, but not wrong.
inline constexpr auto processPatience = std::chrono::seconds(60);

// How a program ended.
struct ProcessEnd {
    int status = -1;  // exit status; -1 when a signal ended the program
    int signal = 0;   // that signal; Windows has none
};

// How a program is told to end: from the keyboard, by the system that is going down, or without
// being asked. On Windows the first two are Ctrl-Break, which a console can send to one program.
enum class Stop { Interrupt, Terminate, Kill };

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

// The files that a program's standard streams are tied to.
struct StreamFiles {
    std::filesystem::path input;
    std::filesystem::path output;
    std::filesystem::path errors;
};

// Runs a program to its end on these files. Each system has its own.
ProcessEnd runOnFiles(const std::filesystem::path& program,
                      const std::vector<std::string>& arguments, const StreamFiles& files);

// A program that runs beside the test. It is killed at the end of the test if it still runs.
class Process {
  public:
    Process(const std::filesystem::path& program, const std::vector<std::string>& arguments);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // The number that the system knows it by.
    std::int64_t id() const;

    void write(std::string_view text);
    void closeInput();
    // Stops listening to the standard output: the program writes into a closed pipe then.
    void closeOutput();

    // The next line of the standard output, without its end. Throws when none comes in time.
    std::string readLine();

    // What came out on the standard error so far.
    std::string errors() const;

    void tell(Stop how) const;

    // Waits for the end. Throws when it does not come in time.
    ProcessEnd wait();

  private:
    struct State;

    // Appends to the buffer what comes out next.
    void receive(std::chrono::steady_clock::time_point deadline);

    TemporaryHome folder_;
    std::unique_ptr<State> state_;
    std::string buffer_;
};

}  // namespace tandril::test
