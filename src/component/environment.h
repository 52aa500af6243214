#pragma once

#include <string>
#include <string_view>

#include "component/call.h"
#include "component/client20.h"

// The methods that prepare the workstation and hand out its files and settings.
namespace tandril::environment {

// Creates folders, settings, data source, log and empty store where they are missing. Returns ""
// or the error text.
std::string initialize(Call& call);

Variant saveWebPage(Call& call, std::string_view html);
std::string variable(Call& call, std::string_view name);
// The file for a mail: "Harbrook", "UploadReport", "Log" or "StyleSheet"; empty for anything else.
Variant mailContent(Call& call, std::string_view what);
void setDataSourceFile(Call& call, std::string_view fileName);
void storeFieldMapper(Call& call, const std::string& xml, std::string_view overwrite);

}  // namespace tandril::environment
