#include "cli/batch_command.h"

#include <CLI/CLI.hpp>
#include <istream>
#include <ostream>

#include "cli/local_client.h"
#include "surface/json_request.h"

namespace tandril::cli {

void BatchCommand::define(Parser& parser) {
    home_.define(parser);
}

int BatchCommand::run(const Streams& streams) {
    LocalClient local(home_.folder());
    for (std::string line; std::getline(streams.in, line);) {
        streams.out << surface::answerLine(local.client(), line) << std::flush;
        if (!streams.out) {
            return exitFault;
        }
    }
    return exitSuccess;
}

}  // namespace tandril::cli
