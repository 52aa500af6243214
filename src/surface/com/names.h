#pragma once

// The names that the class goes by beside its identifiers. Callers know them: DO NOT CHANGE.
namespace tandril::com {

inline constexpr wchar_t kProgramId[] = L"Tandril.Client20";
inline constexpr wchar_t kVersionedProgramId[] = L"Tandril.Client20.1";
inline constexpr wchar_t kClassTitle[] = L"Tandril Client20";
inline constexpr wchar_t kInterfaceName[] = L"_Client20";
inline constexpr wchar_t kTypeLibraryTitle[] = L"Tandril";

// The proxy of Windows for every interface that its type library describes.
inline constexpr wchar_t kAutomationProxy[] = L"{00020424-0000-0000-C000-000000000046}";

}  // namespace tandril::com
