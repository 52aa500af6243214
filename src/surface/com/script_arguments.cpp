#include "surface/com/script_arguments.h"

#include <cstring>
#include <utility>

#include "surface/com/com_error.h"

namespace tandril::com {
namespace {

constexpr VARTYPE variableType = VT_BYREF | VT_VARIANT;

// The types of the parameters that the description passes by reference.
VARTYPE typeOf(const Parameter& parameter) {
    return parameter.kind == Kind::Int16 ? VT_I2 : VT_BSTR;
}

// How many bytes a variable of that type has; 0 when none can be one. Texts lie elsewhere.
std::size_t sizeOf(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            return 8;
        default:
            return 0;
    }
}

VARTYPE typeOfVariable(const VARIANT& variable) {
    return static_cast<VARTYPE>(variable.vt & ~VT_BYREF);
}

bool canTake(const VARIANT& variable) {
    const VARTYPE type = typeOfVariable(variable);
    return type == VT_VARIANT || type == VT_BSTR || sizeOf(type) != 0;
}

// Stores the value in the variable, which keeps its type unless it takes all of them.
void store(VARIANT& value, const VARIANT& variable) {
    if (variable.vt == variableType) {
        requireSuccess(::VariantCopy(variable.pvarVal, &value));
        return;
    }
    const VARTYPE type = typeOfVariable(variable);
    requireSuccess(::VariantChangeType(&value, &value, 0, type));
    if (type == VT_BSTR) {
        std::swap(*variable.pbstrVal, value.bstrVal);
    } else {
        std::memcpy(variable.byref, &value.bstrVal, sizeOf(type));
    }
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
            } else if (argument.vt == variableType) {
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
    // A variable may in its turn stand for one of another type.
    const bool isVariable = argument.vt == variableType;
    VARIANT* given = isVariable ? argument.pvarVal : &argument;
    const bool isTyped = (given->vt & VT_BYREF) != 0;
    Place& place = places_.emplace_back();
    ::VariantInit(&place.value);
    ::VariantInit(&place.variable);
    if (isVariable || isTyped) place.variable = isTyped ? *given : argument;
    if (isTyped && !canTake(place.variable)) throw ComError{DISP_E_TYPEMISMATCH};
    requireSuccess(::VariantChangeType(&place.value, given, 0, type));
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    argument.byref = &place.value.bstrVal;  // where every type of value lies
}

void ScriptArguments::writeBack() {
    for (Place& place : places_) {
        if (place.variable.vt != VT_EMPTY) store(place.value, place.variable);
    }
}

}  // namespace tandril::com
