#include "cli/call_command.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <span>
#include <string_view>

#include "cli/local_client.h"
#include "surface/text_call.h"

namespace tandril::cli {
namespace {

constexpr std::string_view usage = "tandril call [--home DIR] METHOD [ARG...]";

}  // namespace

void CallCommand::define(Parser& parser) {
    home_.define(parser);
    parser.prefix_command();
    parser.footer(std::string(usage) +
                  "\nEverything from METHOD on is taken as it is, also what begins with \"-\".");
    parser_ = &parser;
}

int CallCommand::run(const Streams& streams) {
    const std::vector<std::string> words = parser_->remaining();
    if (words.empty() || words.front().starts_with('-')) {
        streams.err << (words.empty() ? "no method is named" : "unknown option " + words.front())
                    << "\nUsage: " << usage << '\n';
        return exitMisuse;
    }
    try {
        surface::TextCall call(words.front(), std::span(words).subspan(1));
        LocalClient local(home_.folder());
        streams.out << call.make(local.client());
    } catch (const surface::InvalidCall& invalid) {
        streams.err << invalid.what() << '\n';
        return exitMisuse;
    }
    return exitSuccess;
}

}  // namespace tandril::cli
