#pragma once

#include <string>
#include <string_view>

#include "component/client20.h"

namespace tandril::surface {

// Answers one request of a stream of JSON lines.
//
// A request is an object with the members "method" (a string) and "args" (an array with all
// arguments in order); an "id" member, of any kind, comes back in the answer, also in that to an
// object that is no valid request. Other members mean nothing. A line that is not a JSON object, an
// empty one included, and one that is no valid call, is answered with {"invalid": "text"}.
//
// `line` comes without its line feed; a carriage return at its end is white space to JSON. The
// answer ends with a line feed.
std::string answerLine(Client20& client, std::string_view line);

}  // namespace tandril::surface
