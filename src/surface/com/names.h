#pragma once

// The names that the class goes by beside its identifiers. Callers know them: DO NOT CHANGE.
namespace tandril::com {

inline constexpr wchar_t programId[] = L"Tandril.Client20";
inline constexpr wchar_t versionedProgramId[] = L"Tandril.Client20.1";
inline constexpr wchar_t classTitle[] = L"Tandril Client20";
inline constexpr wchar_t interfaceName[] = L"_Client20";
inline constexpr wchar_t typeLibraryTitle[] = L"Tandril";

// The proxy of Windows for every interface that its type library describes.
inline constexpr wchar_t automationProxy[] = L"{00020424-0000-0000-C000-000000000046}";

}  // namespace tandril::com
