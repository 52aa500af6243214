#include "masterdata/archive.h"

#include <string>

#include "platform/system_path.h"

namespace tandril::masterdata {
namespace {

constexpr std::string_view title = "SLBEU0313";
constexpr std::string_view archive = "SLBEU0310";
constexpr std::string_view isMissing = "SLBEU0311";
constexpr std::string_view advice = "SLBEU0312";
// Two blanks end the line.
constexpr std::string_view place = "C:\\Vorn Tandril\\MasterData\\  ";
constexpr std::string_view lineEnd = "\r\n";

}  // namespace

void startArchive(platform::Shell& shell, std::string_view folder, std::string_view name,
                  const mapper::Labels& label) {
    const std::string program = std::string(name) + ".exe";
    if (platform::isPlainFileName(program) && shell.start(folder, program)) {
        return;
    }
    std::string prompt = label(archive) + program;
    prompt += lineEnd;
    prompt += label(isMissing);
    prompt += place;
    prompt += lineEnd;
    prompt += lineEnd;
    prompt += label(advice);
    shell.showCritical(label(title), prompt);
}

}  // namespace tandril::masterdata
