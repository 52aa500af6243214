#pragma once

#include <optional>
#include <string>

#include "cli/command.h"
#include "cli/home_option.h"

namespace tandril::cli {

// tandril serve [OPTIONS]: the web host, until it is interrupted.
class ServeCommand : public Command {
  public:
    std::string name() const override { return "serve"; }
    std::string summary() const override { return "Show the page in a browser on this machine"; }
    void define(Parser& parser) override;
    int run(const Streams& streams) override;

  private:
    HomeOption home_;
    std::optional<int> port_;
    std::string page_;
    bool open_ = false;
    std::string enterprise_;
    int enterpriseTimeout_ = 60;  // seconds
    int bodyLimit_ = 64;          // MiB
};

}  // namespace tandril::cli
