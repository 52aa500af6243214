#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/shell.h"

namespace tandril::test {

// Starts and shows nothing, and remembers what it was asked to.
class RecordingShell : public platform::Shell {
  public:
    struct Start {
        std::string folder;
        std::string name;
        bool operator==(const Start&) const = default;
    };
    struct Message {
        std::string title;
        std::string prompt;
        bool operator==(const Message&) const = default;
    };

    bool start(std::string_view folder, std::string_view name) override {
        starts.push_back({std::string(folder), std::string(name)});
        return startSucceeds;
    }
    void showCritical(std::string_view title, std::string_view prompt) override {
        messages.push_back({std::string(title), std::string(prompt)});
    }

    bool startSucceeds = true;
    std::vector<Start> starts;
    std::vector<Message> messages;
};

}  // namespace tandril::test
