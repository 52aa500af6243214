#include "cli/program.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <memory>
#include <ostream>
#include <vector>

#include "cli/all_commands.h"

namespace tandril::cli {
namespace {

// --help and --version arrive as exceptions with the exit code 0; everything else is misuse.
int finishParsing(const CLI::App& parser, const CLI::ParseError& end, const Streams& streams) {
    const int code = parser.exit(end, streams.out, streams.err);
    return code == 0 ? kSuccess : kMisuse;
}

// What could not be written may have been an answer, so that this is a failure, whatever the
// command itself came to.
int finishWriting(int status, const Streams& streams) {
    if (streams.out.flush()) {
        return status;
    }
    streams.err << "cannot write to the standard output\n";
    return kFault;
}

int runCommand(Command& command, const Streams& streams) {
    try {
        return command.run(streams);
    } catch (const std::exception& fault) {
        streams.err << fault.what() << '\n';
        return kFault;
    }
}

}  // namespace

int runProgram(int argc, const char* const* argv, const Streams& streams) {
    CLI::App parser("Offline field-service client", "tandril");
    parser.set_version_flag("--version", "tandril " TANDRIL_VERSION);
    parser.require_subcommand(1);

    int status = kSuccess;
    const std::vector<std::unique_ptr<Command>> commands = allCommands();
    for (const std::unique_ptr<Command>& command : commands) {
        CLI::App* child = parser.add_subcommand(command->name(), command->summary());
        command->define(*child);
        child->callback([&status, &command, &streams] { status = runCommand(*command, streams); });
    }
    try {
        parser.parse(argc, argv);
    } catch (const CLI::ParseError& end) {
        status = finishParsing(parser, end, streams);
    }
    return finishWriting(status, streams);
}

}  // namespace tandril::cli
