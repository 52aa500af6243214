#pragma once

#include <string_view>

namespace tandril::platform {

// What the component starts or shows outside of its own files.
class Shell {
  public:
    virtual ~Shell() = default;

    // Starts the program `name` that lies in `folder` (a system path) with that folder as its
    // working directory, and returns at once. Returns false when there is no such file or it
    // cannot be started.
    virtual bool start(std::string_view folder, std::string_view name) = 0;

    // Shows a critical message and waits until it is dismissed, where there is somebody to do so.
    virtual void showCritical(std::string_view title, std::string_view prompt) = 0;
};

}  // namespace tandril::platform
