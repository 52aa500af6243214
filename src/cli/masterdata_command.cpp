#include "cli/masterdata_command.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <string_view>

#include "cli/local_client.h"
#include "cli/masterdata_folder.h"
#include "cli/progress_bar.h"
#include "component/settings.h"
#include "masterdata/tables.h"
#include "platform/fault.h"
#include "platform/terminal.h"
#include "platform/utf8_path.h"

namespace tandril::cli {
namespace {

// Databases are named without the extension; with it, it is ignored.
std::string baseName(const std::string& name) {
    return name.ends_with(databaseExtension)
               ? name.substr(0, name.size() - databaseExtension.size())
               : name;
}

std::string_view describe(platform::DatabaseKind kind) {
    switch (kind) {
        case platform::DatabaseKind::Sqlite:
            return "SQLite";
        case platform::DatabaseKind::Access:
            return "Access, can only be read";
        case platform::DatabaseKind::Unknown:
            break;
    }
    return "no database";
}

// Lays the home out, unless it is already.
void initialise(Client20& client) {
    const Variant error = client.Initialize();
    if (error.text && !error.text->empty()) {
        throw Fault(*error.text);
    }
}

// Shows the import's progress where there is a terminal.
ImportResult importShown(const MasterdataFolder& folder, const std::string& file,
                         const std::string& name, bool replace, std::ostream& terminal) {
    ProgressBar bar(terminal, platform::isErrorTerminal(), masterdata::tables().size());
    return folder.import(file, name, replace,
                         {[&](std::string_view table) { bar.begin(table); }, [&] { bar.count(); },
                          [&] { bar.end(); }});
}

}  // namespace

void MasterdataCommand::define(CLI::App& parser) {
    home_.define(parser);
    parser.require_subcommand(1);
    CLI::App* creation =
        addAction(parser, "create", "Make an empty SQLite database", &MasterdataCommand::create);
    creation->add_option("NAME", name_, "The database's name, without .mdb")->required();
    CLI::App* importing =
        addAction(parser, "import", "Copy a Microsoft Access file into a SQLite database",
                  &MasterdataCommand::import);
    importing->add_option("FILE", file_, "The file to read")->required();
    importing->add_option("NAME", name_, "The database's name (default: the file's)");
    for (CLI::App* action : {creation, importing}) {
        action->add_flag("--replace", replace_, "Replace a database of that name");
    }
    addAction(parser, "list", "List the databases; a star marks the current one",
              &MasterdataCommand::list);
    addAction(parser, "use", "Make a database the current one", &MasterdataCommand::use)
        ->add_option("NAME", name_, "The database's name, without .mdb")
        ->required();
}

CLI::App* MasterdataCommand::addAction(CLI::App& parser, const char* name, const char* summary,
                                       Action action) {
    CLI::App* child = parser.add_subcommand(name, summary);
    child->fallthrough();  // --home may also follow the action
    child->parse_complete_callback([this, action] { action_ = action; });
    return child;
}

int MasterdataCommand::run(const Streams& streams) {
    return (this->*action_)(streams);
}

int MasterdataCommand::create(const Streams& streams) {
    const std::string home = home_.existingFolder();
    LocalClient local(home);
    initialise(local.client());
    const std::string name = baseName(name_);
    MasterdataFolder(home).create(name, replace_);
    streams.out << name << ": " << masterdata::tables().size() << " tables\n";
    return exitSuccess;
}

int MasterdataCommand::import(const Streams& streams) {
    const std::string home = home_.existingFolder();
    LocalClient local(home);
    initialise(local.client());
    const std::string name = baseName(
        name_.empty() ? platform::utf8FromPath(platform::pathFromUtf8(file_).filename()) : name_);
    const ImportResult result =
        importShown(MasterdataFolder(home), file_, name, replace_, streams.err);
    streams.out << name << ": " << masterdata::tables().size() << " tables, " << result.rows
                << " rows\n";
    for (const std::string& table : result.missingTables) {
        streams.err << table << " is missing in \"" << file_ << "\"; it has no rows\n";
    }
    return exitSuccess;
}

int MasterdataCommand::list(const Streams& streams) {
    const std::string home = home_.existingFolder();
    LocalClient local(home);
    const std::string current = Settings(local.module().machine.registry).currentDatabase();
    for (const auto& [name, kind] : MasterdataFolder(home).databases()) {
        streams.out << (name == current ? "* " : "  ") << name << " (" << describe(kind) << ")\n";
    }
    return exitSuccess;
}

int MasterdataCommand::use(const Streams& streams) {
    const std::string home = home_.existingFolder();
    std::string name = baseName(name_);
    if (!MasterdataFolder(home).has(name)) {
        throw Fault("there is no database \"" + name + "\"");
    }
    LocalClient local(home);
    initialise(local.client());
    std::string file = name + std::string(databaseExtension);
    local.client().SetCurrentmdb(name);
    local.client().SetODBCDataBase(file);
    streams.out << name << " is the current database\n";
    return exitSuccess;
}

}  // namespace tandril::cli
