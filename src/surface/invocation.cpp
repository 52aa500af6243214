#include "surface/invocation.h"

namespace tandril::surface {

const Method& requireMethod(std::string_view name) {
    const Method* method = findMethod(name);
    if (method == nullptr) {
        throw InvalidCall(Outcome::UnknownMethod, "unknown method: " + std::string(name));
    }
    return *method;
}

void requireCount(const Method& method, std::size_t count) {
    if (count != method.parameters.size()) {
        throw InvalidCall(Outcome::BadArguments, "wrong number of arguments: " + signature(method));
    }
}

InvalidCall wrongKind(const Method& method, const Parameter& parameter) {
    return {Outcome::BadArguments,
            "wrong kind of argument " + std::string(parameter.name) + ": " + signature(method)};
}

}  // namespace tandril::surface
