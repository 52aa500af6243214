#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iosfwd>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/shell.h"

namespace tandril::host {

// The last messages that the component showed, for the page to show them, too. Numbered from 1 in
// the order in which they came. Safe for concurrent use.
class Messages {
  public:
    struct Message {
        std::int64_t number = 0;
        std::string title;
        std::string text;
    };

    static constexpr std::size_t mostKept = 20;

    void add(std::string_view title, std::string_view text);

    // The kept messages with a higher number, oldest first.
    std::vector<Message> after(std::int64_t number) const;

  private:
    mutable std::mutex mutex_;
    std::int64_t count_ = 0;
    std::deque<Message> kept_;
};

// A shell that starts programs as another one does, and tells messages to the page and to the
// host's log: a box on the screen would keep every call waiting until somebody finds it behind the
// browser.
class AnnouncingShell final : public platform::Shell {
  public:
    AnnouncingShell(platform::Shell& shell, Messages& messages, std::ostream& log)
        : shell_(shell), messages_(messages), log_(log) {}

    bool start(std::string_view folder, std::string_view name) override {
        return shell_.start(folder, name);
    }
    void showCritical(std::string_view title, std::string_view prompt) override;

  private:
    platform::Shell& shell_;
    Messages& messages_;
    std::ostream& log_;
};

}  // namespace tandril::host
