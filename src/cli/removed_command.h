#pragma once

#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/home_option.h"

namespace tandril::cli {

// tandril removed list | restore: the copies of records that an upload report or the purge took
// out of the store.
class RemovedCommand : public Command {
  public:
    std::string name() const override { return "removed"; }
    std::string summary() const override {
        return "List or put back records that left the store after an upload";
    }
    void define(Parser& parser) override;
    int run(const Streams& streams) override;

  private:
    int list(const Streams& streams) const;
    int restore(const Streams& streams) const;

    HomeOption home_;
    const Parser* list_ = nullptr;
    std::vector<std::string> ids_;
    bool all_ = false;
    bool resend_ = false;
};

}  // namespace tandril::cli
