#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace tandril::cli {

// A bar in one line of a terminal, drawn anew over itself as the work goes on. Draws nothing when
// it is not to be shown, and at most every tenth of a second.
class ProgressBar {
  public:
    // `steps` is the amount of work, at least 1.
    ProgressBar(std::ostream& out, bool isShown, std::size_t steps)
        : out_(out), isShown_(isShown), steps_(steps) {}
    // Clears the line.
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // Begins the next step, which is called `name`.
    void begin(std::string_view name);
    // Counts one more thing done within the step.
    void count();
    void end() { ++done_; }

  private:
    void draw();

    std::ostream& out_;
    bool isShown_;
    std::size_t steps_;
    std::size_t done_ = 0;
    std::size_t counted_ = 0;
    std::string name_;
    std::chrono::steady_clock::time_point drawnAt_;
};

}  // namespace tandril::cli
