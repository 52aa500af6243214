#pragma once

#include <windows.h>
// Needs the types of windows.h.
#include <oleauto.h>

#include <string>
#include <string_view>

#include "component/methods.h"

// Automation's values to ours and back. Those that cannot be had throw ComError.
namespace tandril::com {

// A missing string is an empty one.
Value decode(BSTR text);
Value decode(short number);
// The text of the value: a number in decimal, a boolean as "true" or "false"; "" for an empty one,
// null, and an argument that was left out. DISP_E_TYPEMISMATCH when it has none.
Value decode(const VARIANT& variant);
Value decode(const BSTR* text);
Value decode(const short* number);

// Each stores what the caller then owns. What was there before is not freed.
void encode(const Value& value, BSTR* result);
void encode(const Value& value, VARIANT* result);
void encode(const Value& value, VARIANT_BOOL* result);

// Stores the new value of a by-reference argument in place of the old one; of others, nothing.
void update(const Value& value, BSTR* argument);
void update(const Value& value, short* argument);
template <class T>
void update(const Value&, const T&) {}

// E_OUTOFMEMORY when there is no room for it.
BSTR allocate(std::string_view text);

}  // namespace tandril::com
