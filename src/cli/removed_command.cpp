#include "cli/removed_command.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <string_view>

#include "cli/local_client.h"
#include "component/kept_copies.h"

namespace tandril::cli {
namespace {

using kept_copies::Copy;

std::string_view kindOf(store::Section section) {
    switch (section) {
        case store::Section::Orders:
            return "order";
        case store::Section::Activities:
            return "activity";
        case store::Section::HourRegistrations:
            return "registration";
        default:
            return store::costTypeOf(section)->pageWord;
    }
}

// "activity A1/10"
std::string nameOf(const store::RecordKey& key) {
    std::string name = std::string(kindOf(key.section)) + ' ' + key.order;
    if (key.section != store::Section::Orders) name += '/' + key.activity;
    if (!key.line.empty()) name += '/' + key.line;
    return name;
}

void print(std::ostream& out, std::string_view what, const std::vector<std::string>& ids) {
    for (const std::string& id : ids) out << what << ' ' << id << '\n';
}

}  // namespace

void RemovedCommand::define(Parser& parser) {
    home_.define(parser);
    parser.require_subcommand(1);
    parser.footer("A copy is kept of each record that was not just as the server had sent it.");

    list_ = parser.add_subcommand("list", "Print all copies, the oldest first")->fallthrough();

    CLI::App* restore = parser.add_subcommand("restore", "Put copies back into the store");
    restore->fallthrough();
    CLI::Option* ids = restore->add_option("ID", ids_, "What the list says in front of each copy");
    CLI::Option* all = restore->add_flag("--all", all_, "Put all copies back");
    ids->excludes(all);
    restore->add_flag("--resend", resend_, "Put them into the next upload again");
}

int RemovedCommand::run(const Streams& streams) {
    if (*list_) return list(streams);
    if (ids_.empty() && !all_) {
        streams.err << "no copy is named; --all takes them all\n";
        return exitMisuse;
    }
    return restore(streams);
}

int RemovedCommand::list(const Streams& streams) const {
    LocalClient local(home_.existingFolder());
    for (const Copy& copy : kept_copies::list(local.module())) {
        streams.out << copy.id << '\t' << copy.time << '\t' << copy.reason << '\t'
                    << nameOf(copy.key) << '\t' << copy.state << '\n';
    }
    return exitSuccess;
}

int RemovedCommand::restore(const Streams& streams) const {
    LocalClient local(home_.existingFolder());
    std::vector<std::string> ids = ids_;
    if (all_) {
        for (const Copy& copy : kept_copies::list(local.module())) ids.push_back(copy.id);
    }
    const kept_copies::Restored result = kept_copies::restore(
        local.module(), ids, resend_ ? kept_copies::As::Unsent : kept_copies::As::ItWas);
    print(streams.err, "no copy", result.unknown);
    print(streams.out, "restored", result.restored);
    print(streams.err, "the store has such a record already, kept", result.existing);
    if (!result.unknown.empty()) return exitMisuse;
    return result.existing.empty() ? exitSuccess : exitFault;
}

}  // namespace tandril::cli
