#include "surface/com/script_arguments.h"

#include <cstring>
#include <utility>

#include "surface/com/com_error.h"

namespace tandril::com {
namespace {

constexpr VARTYPE variableType = VT_BYREF | VT_VARIANT;

// The types of the parameters that are not variants.
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

// The page and its data know one way of writing numbers, whatever the user's locale.
void change(VARIANT& target, VARIANT& value, VARTYPE type) {
    if (value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND) {
        throw ComError{DISP_E_PARAMNOTOPTIONAL};
    }
    requireSuccess(::VariantChangeTypeEx(&target, &value, LOCALE_INVARIANT, 0, type));
}

// No engine hands over what would bring the process down, but a program may by mistake.
const DISPPARAMS& requireSound(const DISPPARAMS& given) {
    const bool isSound = given.cNamedArgs <= given.cArgs &&
                         (given.cArgs == 0 || given.rgvarg != nullptr) &&
                         (given.cNamedArgs == 0 || given.rgdispidNamedArgs != nullptr);
    if (!isSound) throw ComError{E_INVALIDARG};
    return given;
}

void requireTarget(const VARIANT& argument) {
    if ((argument.vt & VT_BYREF) != 0 && argument.byref == nullptr) throw ComError{E_INVALIDARG};
}

// Stores the value in the variable, which keeps its type unless it takes all of them.
void store(VARIANT& value, const VARIANT& variable) {
    if (variable.vt == variableType) {
        requireSuccess(::VariantCopy(variable.pvarVal, &value));
        return;
    }
    const VARTYPE type = typeOfVariable(variable);
    change(value, value, type);
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
    : fitted_(requireSound(given)), arguments_(given.rgvarg, given.rgvarg + given.cArgs) {
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
    if (arguments_.size() != method.parameters.size()) throw ComError{DISP_E_BADPARAMCOUNT};
    for (std::size_t index = 0; index < arguments_.size(); ++index) {
        const std::size_t position = positionOf(index);
        if (position >= method.parameters.size()) continue;
        try {
            fit(method.parameters[position], arguments_[index]);
        } catch (const ComError&) {
            if (wrongArgument != nullptr) *wrongArgument = static_cast<UINT>(index);
            throw;
        }
    }
}

void ScriptArguments::fit(const Parameter& parameter, VARIANT& argument) {
    requireTarget(argument);
    if (argument.vt == variableType) requireTarget(*argument.pvarVal);
    if (parameter.byReference) {
        placeByReference(argument, typeOf(parameter));
        return;
    }
    if (argument.vt == variableType) argument = *argument.pvarVal;
    if (parameter.kind != Kind::Variant) placeValue(argument, typeOf(parameter));
}

ScriptArguments::Place& ScriptArguments::newPlace() {
    Place& place = places_.emplace_back();
    ::VariantInit(&place.value);
    ::VariantInit(&place.variable);
    return place;
}

void ScriptArguments::placeByReference(VARIANT& argument, VARTYPE type) {
    if (argument.vt == (VT_BYREF | type)) return;
    // A variable may in its turn stand for one of another type.
    const bool isVariable = argument.vt == variableType;
    VARIANT* given = isVariable ? argument.pvarVal : &argument;
    const bool isTyped = (given->vt & VT_BYREF) != 0;
    Place& place = newPlace();
    if (isVariable || isTyped) place.variable = isTyped ? *given : argument;
    if (isTyped && !canTake(place.variable)) throw ComError{DISP_E_TYPEMISMATCH};
    change(place.value, *given, type);
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    argument.byref = &place.value.bstrVal;  // where every type of value lies
}

void ScriptArguments::placeValue(VARIANT& argument, VARTYPE type) {
    if (argument.vt == type) return;
    Place& place = newPlace();
    change(place.value, argument, type);
    argument = place.value;
}

void ScriptArguments::writeBack() {
    for (Place& place : places_) {
        if (place.variable.vt != VT_EMPTY) store(place.value, place.variable);
    }
}

}  // namespace tandril::com
