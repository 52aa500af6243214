#include "cli/progress_bar.h"

#include <ostream>

namespace tandril::cli {
namespace {

constexpr std::size_t kWidth = 30;
constexpr std::chrono::milliseconds kPause(100);
constexpr std::string_view kClearLine = "\r\x1b[K";

}  // namespace

ProgressBar::~ProgressBar() {
    if (isShown_) {
        out_ << kClearLine << std::flush;
    }
}

void ProgressBar::begin(std::string_view name) {
    name_ = name;
    counted_ = 0;
    draw();
}

void ProgressBar::count() {
    ++counted_;
    if (isShown_ && std::chrono::steady_clock::now() - drawnAt_ >= kPause) {
        draw();
    }
}

void ProgressBar::draw() {
    if (!isShown_) {
        return;
    }
    drawnAt_ = std::chrono::steady_clock::now();
    const std::size_t filled = kWidth * done_ / steps_;
    out_ << kClearLine << '[' << std::string(filled, '#') << std::string(kWidth - filled, '.')
         << "] " << 100 * done_ / steps_ << "% " << name_;
    if (counted_ > 0) {
        out_ << ", " << counted_ << " rows";
    }
    out_ << std::flush;
}

}  // namespace tandril::cli
