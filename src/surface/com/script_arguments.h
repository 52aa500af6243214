#pragma once

#include <windows.h>
// Needs the types of windows.h.
#include <oleauto.h>

#include <deque>
#include <vector>

#include "component/methods.h"

namespace tandril::com {

// The arguments of a call by name, each made to be of the type of its parameter. The type library
// would do that as well, but a script passes its variables as references to variants, which it
// refuses for parameters of another type; it writes numbers as the user's locale has them; and not
// every system has it say which argument was wrong. What a by-reference parameter holds after the
// call goes back into the script's variable, or into that of a language whose variables have types
// of their own, such as the 32-bit integers of .NET.
class ScriptArguments {
  public:
    // For a call of the method whose slot is `id`; those of any other id stay as they are. Throws
    // ComError when they are too many or too few, or one does not fit, which `wrongArgument`, where
    // it is given, then tells.
    ScriptArguments(DISPID id, const DISPPARAMS& given, UINT* wrongArgument);
    ~ScriptArguments();
    ScriptArguments(const ScriptArguments&) = delete;
    ScriptArguments& operator=(const ScriptArguments&) = delete;

    DISPPARAMS* get() { return &fitted_; }

    // To be called after a call that went well.
    void writeBack();

  private:
    // Where a by-reference argument lies during the call.
    struct Place {
        VARIANT value;
        VARIANT variable;  // a reference to it; VT_EMPTY when the script passed none
    };

    void fit(const Method& method, UINT* wrongArgument);
    void fit(const Parameter& parameter, VARIANT& argument);
    // Of the argument at that index, in the order of the parameters.
    std::size_t positionOf(std::size_t index) const;
    void placeByReference(VARIANT& argument, VARTYPE type);
    void placeValue(VARIANT& argument, VARTYPE type);
    Place& newPlace();

    DISPPARAMS fitted_;
    std::vector<VARIANT> arguments_;  // what they hold is the caller's
    std::deque<Place> places_;
};

}  // namespace tandril::com
