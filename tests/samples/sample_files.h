#pragma once

#include <filesystem>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "enterprise/master_tables.h"

namespace tandril::samples {

// The document of a file below the samples folder. Throws std::runtime_error when it is not
// well-formed.
pugi::xml_document load(std::string_view name);

// The rows of the sample master data.
enterprise::MasterTables masterTables();

// Every message code that the client uses.
std::vector<std::string> messageCodes();

std::vector<pugi::xml_node> elements(pugi::xml_node parent);
std::vector<std::string> elementNames(pugi::xml_node parent);

// The names of the sections whose records are shown and edited, in the order of the store.
const std::vector<std::string>& recordSections();

// The sections whose groups hold the lines of an activity.
const std::vector<std::string>& costSections();

// Whether the text is "yyyymmdd hhmmss" with a real calendar date and time of day.
bool isStamp(std::string_view text);

}  // namespace tandril::samples
