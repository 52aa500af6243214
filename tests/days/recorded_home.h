#pragma once

#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "component/client20.h"
#include "component/module.h"
#include "platform/machine.h"
#include "support/temporary_home.h"

namespace tandril::test {

// Tables of a database by name, each a sorted list of its rows.
using Tables = std::map<std::string, std::vector<std::vector<std::string>>>;

// A home folder as a recorded day begins with it, and the component that works in it.
class RecordedHome {
  public:
    explicit RecordedHome(const nlohmann::json& day);

    // Makes the change to the home that the step stands for ("$delete", "$write", "$mkdir",
    // "$restart"), or the call; returns the answer of a call.
    std::optional<nlohmann::json> run(const nlohmann::json& step);

    // What differs from the end of the day; "" when nothing does.
    std::string compareWithEnd(const nlohmann::json& day) const;

  private:
    void restart();
    std::string compareFile(const std::string& name, std::string_view expected) const;
    std::string compareTables(const nlohmann::json& day) const;

    TemporaryHome home_;
    std::unique_ptr<platform::OwnedMachine> machine_;
    std::unique_ptr<Module> module_;
    std::unique_ptr<Client20> client_;
};

}  // namespace tandril::test
