#pragma once

#include <string_view>

// Where everything lies. The install folder is fixed; the platform maps drive "C:" where there is
// none.
namespace tandril::paths {

inline constexpr std::string_view drive = "C:";
inline constexpr std::string_view installFolder = "C:\\Vorn Tandril";
inline constexpr std::string_view masterDataFolder = "C:\\Vorn Tandril\\MasterData";
inline constexpr std::string_view store = "C:\\Vorn Tandril\\Harbrook.xml";
inline constexpr std::string_view report = "C:\\Vorn Tandril\\UploadReport.xml";
inline constexpr std::string_view damagedReport = "C:\\Vorn Tandril\\UploadReport.damaged.xml";
inline constexpr std::string_view upload = "C:\\Vorn Tandril\\Upload.xml";
inline constexpr std::string_view removed = "C:\\Vorn Tandril\\Removed.xml";
inline constexpr std::string_view fieldMapper = "C:\\Vorn Tandril\\FieldMapper.xml";
inline constexpr std::string_view log = "C:\\Vorn Tandril\\log.txt";
inline constexpr std::string_view page = "C:\\Vorn Tandril\\harbrook.html";

}  // namespace tandril::paths
