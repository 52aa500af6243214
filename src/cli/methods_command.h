#pragma once

#include "cli/command.h"

namespace tandril::cli {

// tandril methods: the signature of each method, one a line, in slot order.
class MethodsCommand : public Command {
  public:
    std::string name() const override { return "methods"; }
    std::string summary() const override { return "List the methods with their parameters"; }
    void define(Parser&) override {}
    int run(const Streams& streams) override;
};

}  // namespace tandril::cli
