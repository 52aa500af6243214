#include "surface/text_call.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <system_error>
#include <type_traits>

#include "platform/unicode.h"

namespace tandril::surface {
namespace {

std::optional<Value> decodeBoolean(const std::string& argument) {
    if (argument == "true") {
        return Value(true);
    }
    if (argument == "false") {
        return Value(false);
    }
    return std::nullopt;
}

std::optional<Value> decodeInt16(const std::string& argument) {
    std::int16_t number = 0;
    const char* end = argument.data() + argument.size();
    const auto [stop, error] = std::from_chars(argument.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(Value(number)) : std::nullopt;
}

std::optional<Value> decodeText(const std::string& argument, Kind kind) {
    switch (kind) {
        case Kind::String:
        case Kind::Variant:
            return platform::isUtf8(argument) ? std::optional(Value(argument)) : std::nullopt;
        case Kind::Boolean:
            return decodeBoolean(argument);
        case Kind::Int16:
            return decodeInt16(argument);
    }
    return std::nullopt;
}

std::string toText(const Value& value) {
    return std::visit(
        [](const auto& v) -> std::string {
            using Type = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<Type, std::monostate>) {
                return "";
            } else if constexpr (std::is_same_v<Type, bool>) {
                return v ? "true" : "false";
            } else if constexpr (std::is_same_v<Type, std::string>) {
                return v;
            } else {
                return std::to_string(v);
            }
        },
        value);
}

}  // namespace

TextCall::TextCall(std::string_view method, std::span<const std::string> arguments)
    : method_(requireMethod(method)), values_(decodeAll(method_, arguments, decodeText)) {}

std::string TextCall::make(Client20& client) {
    const Value result = method_.invoke(client, values_);
    return resultText(method_, result, values_);
}

std::string resultText(const Method& method, const Value& result,
                       std::span<const Value> arguments) {
    std::string text = toText(result) + '\n';
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (method.parameters[i].byReference) {
            text += method.parameters[i].name;
            text += '=' + toText(arguments[i]) + '\n';
        }
    }
    return text;
}

}  // namespace tandril::surface
