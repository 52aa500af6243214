// Writes the manual pages and shell completions of the program: tandril-reference TEMPLATES FOLDER
//
// TEMPLATES has a page tandril-COMMAND.1.in for each command, and no others.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <stdexcept>

#include "cli/all_commands.h"
#include "cli/program.h"
#include "command_model.h"
#include "completion.h"
#include "component/methods.h"
#include "manual.h"

namespace {

namespace fs = std::filesystem;
using namespace tandril;

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return text;
}

void writeFile(const fs::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

class Reference {
  public:
    Reference(fs::path templates, fs::path folder)
        : templates_(std::move(templates)),
          folder_(std::move(folder)),
          commands_(cli::allCommands()),
          program_(reference::describe(*cli::describeProgram(commands_))) {
        for (const Method& method : methods()) methods_.emplace_back(method.name);
    }

    void write() {
        fs::create_directories(folder_);
        writePage({program_.name}, program_);
        for (const reference::Command& command : program_.commands) {
            writePage({program_.name, command.name}, command);
        }
        refuseOtherTemplates();
        writeFile(folder_ / "tandril.bash", reference::bashCompletion(program_, methods_));
        writeFile(folder_ / "_tandril", reference::zshCompletion(program_, methods_));
        writeFile(folder_ / "tandril.fish", reference::fishCompletion(program_, methods_));
    }

  private:
    void writePage(const std::vector<std::string>& path, const reference::Command& command) {
        const std::string name = reference::manualName(path) + ".1";
        try {
            writeFile(folder_ / name, reference::manualPage(readFile(templates_ / (name + ".in")),
                                                            path, command, TANDRIL_VERSION));
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(name + ": " + error.what());
        }
        pages_.insert(name + ".in");
    }

    void refuseOtherTemplates() const {
        for (const fs::directory_entry& entry : fs::directory_iterator(templates_)) {
            const std::string name = entry.path().filename().string();
            if (!pages_.contains(name)) {
                throw std::runtime_error("the template " + name + " belongs to no command");
            }
        }
    }

    fs::path templates_;
    fs::path folder_;
    std::vector<std::unique_ptr<cli::Command>> commands_;
    reference::Command program_;
    std::vector<std::string> methods_;
    std::set<std::string> pages_;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: tandril-reference TEMPLATES FOLDER\n";
        return 2;
    }
    try {
        Reference(argv[1], argv[2]).write();
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
