#include "cli/progress_bar.h"

#include <ostream>

namespace tandril::cli {
namespace {

constexpr std::size_t width = 30;
constexpr std::chrono::milliseconds pause(100);
constexpr std::string_view clearLine = "\r\x1b[K";

}  // namespace

ProgressBar::~ProgressBar() {
    if (isShown_) {
        out_ << clearLine << std::flush;
    }
}

void ProgressBar::begin(std::string_view name) {
    name_ = name;
    counted_ = 0;
    draw();
}

void ProgressBar::count() {
    ++counted_;
    if (isShown_ && std::chrono::steady_clock::now() - drawnAt_ >= pause) {
        draw();
    }
}

void ProgressBar::draw() {
    if (!isShown_) {
        return;
    }
    drawnAt_ = std::chrono::steady_clock::now();
    const std::size_t filled = width * done_ / steps_;
    out_ << clearLine << '[' << std::string(filled, '#') << std::string(width - filled, '.') << "] "
         << 100 * done_ / steps_ << "% " << name_;
    if (counted_ > 0) {
        out_ << ", " << counted_ << " rows";
    }
    out_ << std::flush;
}

}  // namespace tandril::cli
