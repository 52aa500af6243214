#include "surface/json_call.h"

#include <cstdint>
#include <exception>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

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

void requireArray(const Method& method, const json& arguments) {
    if (!arguments.is_array()) {
        throw InvalidCall(Outcome::BadArguments,
                          "the arguments must be a JSON array: " + signature(method));
    }
}

AnswerBody encode(const Value& value) {
    return std::visit(
        [](const auto& v) -> AnswerBody {
            if constexpr (std::is_same_v<std::decay_t<decltype(v)>, std::monostate>) {
                return nullptr;
            } else {
                return v;
            }
        },
        value);
}

}  // namespace

Answer call(Client20& client, std::string_view name, const json& arguments) {
    try {
        const Method& method = requireMethod(name);
        requireArray(method, arguments);
        std::vector<Value> values = decodeAll(method, arguments, decode);
        const Value result = method.invoke(client, values);
        return {Outcome::Result, resultBody(method, result, values)};
    } catch (const InvalidCall& invalid) {
        return {invalid.outcome(), invalidBody(invalid.what())};
    } catch (const std::exception& fault) {
        return {Outcome::Fault, AnswerBody{{"fault", fault.what()}}};
    }
}

AnswerBody invalidBody(std::string_view text) {
    return AnswerBody{{"invalid", text}};
}

AnswerBody resultBody(const Method& method, const Value& result, std::span<const Value> arguments) {
    AnswerBody body;
    body["result"] = encode(result);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (method.parameters[i].byReference) {
            body["out"][std::string(method.parameters[i].name)] = encode(arguments[i]);
        }
    }
    return body;
}

}  // namespace tandril::surface
