#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tandril {

class Client20;

// The kinds of parameters and results: string, variant, boolean, 16-bit integer.
enum class Kind { String, Variant, Boolean, Int16 };

// What a surface passes and gets: nothing (an empty variant), or a value of one of the kinds.
using Value = std::variant<std::monostate, bool, std::int16_t, std::string>;

struct Parameter {
    std::string_view name;
    Kind kind;
    bool byReference;
};

// One method of Client20. The command line, the HTTP host and the COM server all read this table,
// and its kinds are derived from the class itself, so that none of them can drift apart.
struct Method {
    int slot;  // 1 to 57, in the order of the COM interface
    std::string_view name;
    std::vector<Parameter> parameters;
    Kind result;

    // Calls the method. There is one argument per parameter, of the parameter's kind (for a
    // variant: nothing or a text); by-reference ones hold the new value afterwards. Throws Fault.
    Value (*invoke)(Client20& client, std::span<Value> arguments);
};

// All methods in slot order.
std::span<const Method> methods();

// The method of that name, in any case; null when there is none.
const Method* findMethod(std::string_view name);

// For people: "GetVariable(iVar: string) -> string".
std::string signature(const Method& method);

// For people: "string", "variant", "boolean", "16-bit integer".
std::string_view kindName(Kind kind);

}  // namespace tandril
