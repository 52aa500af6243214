#include "surface/json_call.h"

#include <exception>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "component/methods.h"

namespace tandril::surface {
namespace {

using nlohmann::json;

std::optional<Value> decodeVariant(const json& argument) {
    if (argument.is_null()) {
        return Value();
    }
    if (argument.is_string()) {
        return Value(argument.get<std::string>());
    }
    if (argument.is_number() || argument.is_boolean()) {
        return Value(argument.dump());
    }
    return std::nullopt;
}

std::optional<Value> decodeInt16(const json& argument) {
    using Limits = std::numeric_limits<std::int16_t>;
    if (!argument.is_number_integer()) {
        return std::nullopt;
    }
    if (argument.is_number_unsigned() && argument.get<std::uint64_t>() > Limits::max()) {
        return std::nullopt;
    }
    const auto number = argument.get<std::int64_t>();
    if (number < Limits::min() || number > Limits::max()) {
        return std::nullopt;
    }
    return Value(static_cast<std::int16_t>(number));
}

std::optional<Value> decode(const json& argument, Kind kind) {
    switch (kind) {
        case Kind::String:
            return argument.is_string() ? std::optional(Value(argument.get<std::string>()))
                                        : std::nullopt;
        case Kind::Variant:
            return decodeVariant(argument);
        case Kind::Boolean:
            return argument.is_boolean() ? std::optional(Value(argument.get<bool>()))
                                         : std::nullopt;
        case Kind::Int16:
            return decodeInt16(argument);
    }
    return std::nullopt;
}

json encode(const Value& value) {
    return std::visit(
        [](const auto& v) -> json {
            if constexpr (std::is_same_v<std::decay_t<decltype(v)>, std::monostate>) {
                return nullptr;
            } else {
                return v;
            }
        },
        value);
}

Answer invalid(Outcome outcome, std::string text) {
    return {outcome, json{{"invalid", std::move(text)}}};
}

Answer invoke(Client20& client, const Method& method, std::vector<Value>& values) {
    json body;
    try {
        body["result"] = encode(method.invoke(client, values));
    } catch (const std::exception& fault) {
        return {Outcome::Fault, json{{"fault", fault.what()}}};
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (method.parameters[i].byReference) {
            body["out"][std::string(method.parameters[i].name)] = encode(values[i]);
        }
    }
    return {Outcome::Result, std::move(body)};
}

}  // namespace

Answer call(Client20& client, std::string_view name, const json& arguments) {
    const Method* method = findMethod(name);
    if (method == nullptr) {
        return invalid(Outcome::UnknownMethod, "unknown method: " + std::string(name));
    }
    if (!arguments.is_array()) {
        return invalid(Outcome::BadArguments,
                       "the arguments must be a JSON array: " + signature(*method));
    }
    if (arguments.size() != method->parameters.size()) {
        return invalid(Outcome::BadArguments, "wrong number of arguments: " + signature(*method));
    }
    std::vector<Value> values;
    values.reserve(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::optional<Value> value = decode(arguments[i], method->parameters[i].kind);
        if (!value) {
            return invalid(Outcome::BadArguments, "wrong kind of argument " +
                                                      std::string(method->parameters[i].name) +
                                                      ": " + signature(*method));
        }
        values.push_back(std::move(*value));
    }
    return invoke(client, *method, values);
}

std::string toLine(const json& body) {
    return body.dump(-1, ' ', false, json::error_handler_t::replace);
}

}  // namespace tandril::surface
