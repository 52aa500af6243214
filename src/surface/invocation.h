#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "component/methods.h"

namespace tandril::surface {

// How a call from outside went.
enum class Outcome {
    Result,
    Fault,
    UnknownMethod,
    BadArguments,
};

// A call that cannot be made: there is no such method, or the arguments do not fit it. The text is
// for the caller; for arguments it ends with the method's signature.
class InvalidCall : public std::runtime_error {
  public:
    InvalidCall(Outcome outcome, const std::string& text)
        : std::runtime_error(text), outcome_(outcome) {}

    Outcome outcome() const { return outcome_; }

  private:
    Outcome outcome_;
};

// The method of that name in any case, if it takes `count` arguments. Throws InvalidCall.
const Method& requireMethod(std::string_view name);
void requireCount(const Method& method, std::size_t count);

// What to throw when the argument for `parameter` is not of its kind.
InvalidCall wrongKind(const Method& method, const Parameter& parameter);

// The values of all arguments. `decode` makes one of an argument and the parameter's kind, or
// nothing when the argument is not of that kind. Throws InvalidCall.
template <class Arguments, class Decode>
std::vector<Value> decodeAll(const Method& method, const Arguments& arguments, Decode decode) {
    requireCount(method, arguments.size());
    std::vector<Value> values;
    values.reserve(arguments.size());
    for (const Parameter& parameter : method.parameters) {
        std::optional<Value> value = decode(arguments[values.size()], parameter.kind);
        if (!value) {
            throw wrongKind(method, parameter);
        }
        values.push_back(std::move(*value));
    }
    return values;
}

}  // namespace tandril::surface
