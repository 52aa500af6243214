#pragma once

#include <string>

#include "cli/command.h"
#include "cli/home_option.h"

namespace tandril::cli {

// tandril masterdata [--home DIR] create NAME | import FILE [NAME] | list | use NAME: the
// master-data databases of a home.
class MasterdataCommand : public Command {
  public:
    std::string name() const override { return "masterdata"; }
    std::string summary() const override {
        return "Create, import, list and choose master-data databases";
    }
    void define(CLI::App& parser) override;
    int run(const Streams& streams) override;

  private:
    using Action = int (MasterdataCommand::*)(const Streams& streams);

    CLI::App* addAction(CLI::App& parser, const char* name, const char* summary, Action action);
    int create(const Streams& streams);
    int import(const Streams& streams);
    int list(const Streams& streams);
    int use(const Streams& streams);

    HomeOption home_;
    Action action_ = nullptr;
    std::string name_;
    std::string file_;
    bool replace_ = false;
};

}  // namespace tandril::cli
