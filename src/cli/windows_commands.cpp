#include "cli/all_commands.h"

#include "cli/batch_command.h"
#include "cli/call_command.h"
#include "cli/masterdata_command.h"
#include "cli/methods_command.h"
#include "cli/removed_command.h"

namespace tandril::cli {

// The web host is written for POSIX sockets.
std::vector<std::unique_ptr<Command>> allCommands() {
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<CallCommand>());
    commands.push_back(std::make_unique<BatchCommand>());
    commands.push_back(std::make_unique<MethodsCommand>());
    commands.push_back(std::make_unique<RemovedCommand>());
    commands.push_back(std::make_unique<MasterdataCommand>());
    return commands;
}

}  // namespace tandril::cli
