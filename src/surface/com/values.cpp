#include "surface/com/values.h"

#include "platform/windows/wide.h"
#include "surface/com/com_error.h"

namespace tandril::com {
namespace {

// A VARIANT that is cleared when destroyed.
class OwnedVariant {
  public:
    OwnedVariant() { ::VariantInit(&variant_); }
    ~OwnedVariant() { ::VariantClear(&variant_); }
    OwnedVariant(const OwnedVariant&) = delete;
    OwnedVariant& operator=(const OwnedVariant&) = delete;

    VARIANT* get() { return &variant_; }

  private:
    VARIANT variant_;
};

std::string textOf(BSTR text) {
    return text == nullptr ? "" : platform::toUtf8({text, ::SysStringLen(text)});
}

// Whether there is room for a value and whether it can be had are two things.
void requireValue(HRESULT result) {
    if (FAILED(result)) throw ComError{result == E_OUTOFMEMORY ? result : DISP_E_TYPEMISMATCH};
}

bool isNothing(const VARIANT& variant) {
    switch (variant.vt) {
        case VT_EMPTY:
        case VT_NULL:
            return true;
        case VT_ERROR:
            return variant.scode == DISP_E_PARAMNOTFOUND;
        default:
            return false;
    }
}

}  // namespace

Value decode(BSTR text) {
    return textOf(text);
}

Value decode(short number) {
    return std::int16_t{number};
}

Value decode(const VARIANT& variant) {
    OwnedVariant plain;
    requireValue(::VariantCopyInd(plain.get(), const_cast<VARIANT*>(&variant)));
    if (isNothing(*plain.get())) return Value();
    if (plain.get()->vt == VT_BOOL) {
        return std::string(plain.get()->boolVal != VARIANT_FALSE ? "true" : "false");
    }
    OwnedVariant text;
    // The page and its data know one way of writing numbers, whatever the user's locale.
    requireValue(::VariantChangeTypeEx(text.get(), plain.get(), LOCALE_INVARIANT, 0, VT_BSTR));
    return textOf(text.get()->bstrVal);
}

Value decode(const BSTR* text) {
    return decode(*text);
}

Value decode(const short* number) {
    return decode(*number);
}

void encode(const Value& value, BSTR* result) {
    *result = allocate(std::get<std::string>(value));
}

void encode(const Value& value, VARIANT* result) {
    ::VariantInit(result);
    if (const auto* text = std::get_if<std::string>(&value)) {
        result->bstrVal = allocate(*text);
        result->vt = VT_BSTR;
    }
}

void encode(const Value& value, VARIANT_BOOL* result) {
    *result = std::get<bool>(value) ? VARIANT_TRUE : VARIANT_FALSE;
}

void update(const Value& value, BSTR* argument) {
    BSTR text = allocate(std::get<std::string>(value));
    ::SysFreeString(*argument);
    *argument = text;
}

void update(const Value& value, short* argument) {
    *argument = std::get<std::int16_t>(value);
}

BSTR allocate(std::string_view text) {
    const std::wstring wide = platform::toWide(text);
    BSTR string = ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (string == nullptr) throw ComError{E_OUTOFMEMORY};
    return string;
}

}  // namespace tandril::com
