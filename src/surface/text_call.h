#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "component/client20.h"
#include "component/methods.h"
#include "surface/invocation.h"

namespace tandril::surface {

// A call with arguments from a command line, checked but not yet made.
class TextCall {
  public:
    // The method's name matches in any case. A string or a variant is taken as it is, if it is
    // UTF-8; a boolean is "true" or "false", a 16-bit integer decimal digits with at most a minus
    // sign before them. Throws InvalidCall.
    TextCall(std::string_view method, std::span<const std::string> arguments);

    // Makes the call. Returns the result on a line of its own, then a line "name=value" for each
    // by-reference parameter; an empty variant is an empty line, a boolean "true" or "false".
    // Throws what the method throws.
    std::string make(Client20& client);

  private:
    const Method& method_;
    std::vector<Value> values_;
};

// The result of a call to `method` as text, as described above.
std::string resultText(const Method& method, const Value& result, std::span<const Value> arguments);

}  // namespace tandril::surface
