#include "surface/com/script_arguments.h"

#include "surface/com/com_error.h"

namespace tandril::com {
namespace {

constexpr VARTYPE kVariable = VT_BYREF | VT_VARIANT;

// The types of the parameters that the description passes by reference.
VARTYPE typeOf(const Parameter& parameter) {
    return parameter.kind == Kind::Int16 ? VT_I2 : VT_BSTR;
}

const Method* methodOf(DISPID id) {
    const auto slot = static_cast<std::size_t>(id);
    return id >= 1 && slot <= methods().size() ? &methods()[slot - 1] : nullptr;
}

}  // namespace

ScriptArguments::ScriptArguments(DISPID id, const DISPPARAMS& given, UINT* wrongArgument)
    : fitted_(given), arguments_(given.rgvarg, given.rgvarg + given.cArgs) {
    if (const Method* method = methodOf(id)) fit(*method, wrongArgument);
    fitted_.rgvarg = arguments_.data();
}

ScriptArguments::~ScriptArguments() {
    for (Place& place : places_) ::VariantClear(&place.value);
}

// Arguments come in the reverse order; those that are named stand before all others.
std::size_t ScriptArguments::positionOf(std::size_t index) const {
    if (index < fitted_.cNamedArgs)
        return static_cast<std::size_t>(fitted_.rgdispidNamedArgs[index]);
    return arguments_.size() - 1 - index;
}

void ScriptArguments::fit(const Method& method, UINT* wrongArgument) {
    for (std::size_t index = 0; index < arguments_.size(); ++index) {
        VARIANT& argument = arguments_[index];
        const std::size_t position = positionOf(index);
        try {
            if (position < method.parameters.size() && method.parameters[position].byReference) {
                placeByReference(argument, typeOf(method.parameters[position]));
            } else if (argument.vt == kVariable) {
                argument = *argument.pvarVal;
            }
        } catch (const ComError&) {
            if (wrongArgument != nullptr) *wrongArgument = static_cast<UINT>(index);
            throw;
        }
    }
}

void ScriptArguments::placeByReference(VARIANT& argument, VARTYPE type) {
    if (argument.vt == (VT_BYREF | type)) return;
    const bool isVariable = argument.vt == kVariable;
    Place& place = places_.emplace_back();
    ::VariantInit(&place.value);
    place.variable = isVariable ? argument.pvarVal : nullptr;
    VARIANT* given = isVariable ? argument.pvarVal : &argument;
    requireSuccess(::VariantChangeType(&place.value, given, 0, type));
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    argument.byref = &place.value.bstrVal;  // where every type of value lies
}

void ScriptArguments::writeBack() {
    for (const Place& place : places_) {
        if (place.variable != nullptr) {
            requireSuccess(::VariantCopy(place.variable, const_cast<VARIANT*>(&place.value)));
        }
    }
}

}  // namespace tandril::com
