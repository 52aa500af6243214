#pragma once

#include <nlohmann/json.hpp>
#include <span>
#include <string_view>

#include "component/client20.h"
#include "surface/invocation.h"

namespace tandril::surface {

// An answer keeps its members in the order in which they are written: result, out.
using AnswerBody = nlohmann::ordered_json;

struct Answer {
    Outcome outcome;
    AnswerBody body;
};

// Makes one call with JSON arguments. The method's name matches in any case. A string parameter
// takes a JSON string, a variant a string, number, boolean or null (read as its text), a 16-bit
// integer a whole number in its range. Never throws for what the caller sent or for a fault of the
// method; the body is one of
//
//   {"result": VALUE}                          null for an empty variant
//   {"result": VALUE, "out": {"NAME": VALUE}}  when the method has by-reference parameters
//   {"fault": "text"}
//   {"invalid": "text"}                        unknown method, wrong number or kind of arguments
Answer call(Client20& client, std::string_view method, const nlohmann::json& arguments);

// The "invalid" answer to a request that is not even a call.
AnswerBody invalidBody(std::string_view text);

// The body of an answer to a call that returned `result` and left `arguments` behind.
AnswerBody resultBody(const Method& method, const Value& result, std::span<const Value> arguments);

}  // namespace tandril::surface
