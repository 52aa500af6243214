#pragma once

#include <string>

#include "cli/parser.h"

namespace tandril::cli {

// The option --home DIR of the commands that work on a home.
class HomeOption {
  public:
    void define(Parser& parser);

    // The folder that was named, which need not exist, else the default home. Throws Fault when
    // there is no default home.
    std::string folder() const;
    // The same, which must exist; "" stands for the machine itself. Throws Fault.
    std::string existingFolder() const;

  private:
    std::string folder_;
};

}  // namespace tandril::cli
