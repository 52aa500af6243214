#pragma once

// The names that the class goes by beside its identifiers. Callers know them: DO NOT CHANGE.
namespace tandril::com {

inline constexpr wchar_t kProgramId[] = L"Tandril.Client20";
inline constexpr wchar_t kVersionedProgramId[] = L"Tandril.Client20.1";
inline constexpr wchar_t kClassTitle[] = L"Tandril Client20";

}  // namespace tandril::com
