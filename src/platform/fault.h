#pragma once

#include <stdexcept>
#include <string>

namespace tandril {

// A run-time fault: something that the caller of a method cannot be expected to handle, such as a
// failed write or a closed database connection. Each surface turns it into its own form (a COM
// exception, a fault object, an exit status). Failures that the page expects are not faults; they
// are results with an error text.
class Fault : public std::runtime_error {
  public:
    // `message` names what was attempted, on what, and why it failed; it is shown to people.
    explicit Fault(const std::string& message) : std::runtime_error(message) {}
};

}  // namespace tandril
