#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tandril::surface {

// A text that is not JSON, or that nests deeper than any request needs (100 levels; without a limit
// a small request could exhaust the stack). The text of the exception is one line and repeats
// nothing of the input.
class InvalidJson : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Reads one JSON value from UTF-8 text. Of members with the same name the last one counts. Throws
// InvalidJson.
nlohmann::json parseJson(std::string_view text);

// The JSON text of a value, on one line, with non-ASCII characters as UTF-8. Bytes that are not
// UTF-8 come out as U+FFFD.
std::string toLine(const nlohmann::ordered_json& value);

}  // namespace tandril::surface
