#include "cli/home_option.h"

#include <CLI/CLI.hpp>
#include <filesystem>

#include "platform/fault.h"
#include "platform/machine.h"
#include "platform/utf8_path.h"

namespace tandril::cli {

void HomeOption::define(Parser& parser) {
    parser
        .add_option("--home", folder_,
                    "The folder that stands for the machine (default: $TANDRIL_HOME, else on "
                    "Windows the machine itself, elsewhere $XDG_DATA_HOME/tandril, else "
                    "~/.local/share/tandril)")
        ->type_name("DIR")
        ->check([](const std::string& folder) {
            return folder.empty() ? std::string("the folder has no name") : std::string();
        });
}

std::string HomeOption::folder() const {
    return folder_.empty() ? platform::defaultHome() : folder_;
}

std::string HomeOption::existingFolder() const {
    std::string home = folder();
    if (!home.empty() && !std::filesystem::is_directory(platform::pathFromUtf8(home))) {
        throw Fault("there is no home \"" + home + "\"");
    }
    return home;
}

}  // namespace tandril::cli
