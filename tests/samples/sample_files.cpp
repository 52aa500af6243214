#include "samples/sample_files.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace tandril::samples {

namespace fs = std::filesystem;

pugi::xml_document load(std::string_view name) {
    const fs::path path = fs::path(TANDRIL_SAMPLES_DIR) / name;
    pugi::xml_document document;
    const auto result = document.load_file(path.c_str());
    if (!result) throw std::runtime_error(path.string() + ": " + result.description());
    return document;
}

enterprise::MasterTables masterTables() {
    return enterprise::MasterTables::load(fs::path(TANDRIL_SAMPLES_DIR) / "masterdata");
}

std::vector<std::string> messageCodes() {
    std::ifstream in(TANDRIL_MESSAGE_CODES);
    std::vector<std::string> codes;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line[0] != '#') codes.push_back(line);
    }
    return codes;
}

std::vector<pugi::xml_node> elements(pugi::xml_node parent) {
    std::vector<pugi::xml_node> found;
    for (const pugi::xml_node child : parent.children()) {
        if (child.type() == pugi::node_element) found.push_back(child);
    }
    return found;
}

std::vector<std::string> elementNames(pugi::xml_node parent) {
    std::vector<std::string> names;
    for (const pugi::xml_node child : elements(parent)) names.emplace_back(child.name());
    return names;
}

const std::vector<std::string>& recordSections() {
    static const std::vector<std::string> names{"ccsocservcordr", "ccsocservcactv",
                                                "ccsocservcmatl", "ccsocservclabr",
                                                "ccsocservcothr", "ccsocservchra"};
    return names;
}

const std::vector<std::string>& costSections() {
    static const std::vector<std::string> names{"ccsocservcmatl", "ccsocservclabr",
                                                "ccsocservcothr"};
    return names;
}

bool isStamp(std::string_view text) {
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    const std::string copy(text);
    if (text.size() != 15 || text[8] != ' ' ||
        std::sscanf(copy.c_str(), "%4d%2u%2u %2d%2d%2d", &year, &month, &day, &hour, &minute,
                    &second) != 6) {
        return false;
    }
    using namespace std::chrono;
    const year_month_day date{std::chrono::year(year), std::chrono::month(month),
                              std::chrono::day(day)};
    return date.ok() && hour < 24 && minute < 60 && second < 60;
}

}  // namespace tandril::samples
