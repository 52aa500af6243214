#include "cli/program.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <ostream>

#include "cli/all_commands.h"

namespace tandril::cli {
namespace {

// --help and --version arrive as exceptions with the exit code 0; everything else is misuse.
int finishParsing(const CLI::App& parser, const CLI::ParseError& end, const Streams& streams) {
    const int code = parser.exit(end, streams.out, streams.err);
    return code == 0 ? exitSuccess : exitMisuse;
}

// What could not be written may have been an answer, so that this is a failure, whatever the
// command itself came to.
int finishWriting(int status, const Streams& streams) {
    if (streams.out.flush()) {
        return status;
    }
    streams.err << "cannot write to the standard output\n";
    return exitFault;
}

int runCommand(Command& command, const Streams& streams) {
    try {
        return command.run(streams);
    } catch (const std::exception& fault) {
        streams.err << fault.what() << '\n';
        return exitFault;
    }
}

}  // namespace

std::shared_ptr<Parser> describeProgram(const std::vector<std::unique_ptr<Command>>& commands) {
    auto parser = std::make_shared<Parser>("Offline field-service client", "tandril");
    parser->set_version_flag("--version", "tandril " TANDRIL_VERSION);
    parser->require_subcommand(1);
    // A slash begins a path or a text, on Windows as elsewhere.
    parser->allow_windows_style_options(false);
    for (const std::unique_ptr<Command>& command : commands) {
        command->define(*parser->add_subcommand(command->name(), command->summary()));
    }
    return parser;
}

int runProgram(int argc, const char* const* argv, const Streams& streams) {
    const std::vector<std::unique_ptr<Command>> commands = allCommands();
    const std::shared_ptr<Parser> parser = describeProgram(commands);

    int status = exitSuccess;
    for (const std::unique_ptr<Command>& command : commands) {
        parser->get_subcommand(command->name())->callback([&status, &command, &streams] {
            status = runCommand(*command, streams);
        });
    }
    try {
        parser->parse(argc, argv);
    } catch (const CLI::ParseError& end) {
        status = finishParsing(*parser, end, streams);
    }
    return finishWriting(status, streams);
}

}  // namespace tandril::cli
