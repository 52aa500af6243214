#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "component/client20.h"

namespace tandril::surface {

// How a call from outside went.
enum class Outcome {
    Result,         // {"result": ..., "out": {...}}
    Fault,          // {"fault": "text"}
    UnknownMethod,  // {"invalid": "text"}
    BadArguments,   // {"invalid": "text"}
};

struct Answer {
    Outcome outcome;
    nlohmann::json body;
};

// Makes one call with JSON arguments. The method's name matches in any case. A string parameter
// takes a JSON string, a variant a string, number, boolean or null (read as its text), a 16-bit
// integer a whole number in its range. "out" holds the by-reference parameters by name and is
// absent when there are none. Never throws for what the caller sent or for a fault of the method.
Answer call(Client20& client, std::string_view method, const nlohmann::json& arguments);

// The JSON text of an answer, on one line, with non-ASCII characters as UTF-8. Bytes that are not
// UTF-8 come out as U+FFFD.
std::string toLine(const nlohmann::json& body);

}  // namespace tandril::surface
