#pragma once

#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/home_option.h"

namespace tandril::cli {

// tandril call [--home DIR] METHOD [ARG...]: one call, its result as text.
class CallCommand : public Command {
  public:
    std::string name() const override { return "call"; }
    std::string summary() const override { return "Make one call and print its result"; }
    void define(Parser& parser) override;
    int run(const Streams& streams) override;

  private:
    HomeOption home_;
    // Everything from the method on is the call's, also what looks like an option.
    const Parser* parser_ = nullptr;
};

}  // namespace tandril::cli
