#include "host/messages.h"

#include <ostream>
#include <syncstream>

namespace tandril::host {

void Messages::add(std::string_view title, std::string_view text) {
    const std::scoped_lock lock(mutex_);
    kept_.push_back({++count_, std::string(title), std::string(text)});
    if (kept_.size() > mostKept) {
        kept_.pop_front();
    }
}

std::vector<Messages::Message> Messages::after(std::int64_t number) const {
    const std::scoped_lock lock(mutex_);
    std::vector<Message> found;
    for (const Message& message : kept_) {
        if (message.number > number) {
            found.push_back(message);
        }
    }
    return found;
}

void AnnouncingShell::showCritical(std::string_view title, std::string_view prompt) {
    messages_.add(title, prompt);
    std::osyncstream(log_) << title << ": " << prompt << std::endl;
}

}  // namespace tandril::host
