#pragma once

#include "cli/command.h"
#include "cli/home_option.h"

namespace tandril::cli {

// tandril batch [--home DIR]: one JSON request per line of the standard input, one JSON answer per
// line of the standard output, all on one object.
class BatchCommand : public Command {
  public:
    std::string name() const override { return "batch"; }
    std::string summary() const override {
        return "Make the calls that come as JSON lines, and answer each with one";
    }
    void define(Parser& parser) override;
    int run(const Streams& streams) override;

  private:
    HomeOption home_;
};

}  // namespace tandril::cli
