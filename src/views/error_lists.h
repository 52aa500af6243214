#pragma once

#include <cstddef>
#include <string>

#include "mapper/labels.h"
#include "store/upload_report.h"

// What the page shows of the records that the server refused.
namespace tandril::views {

// The link in the page's header that opens the list.
std::string errorPool(std::size_t errors, const mapper::Labels& label);

// The list as a panel for the container "divList"; a header row only when nothing was refused.
std::string errorList(const store::UploadReport& report, const mapper::Labels& label);

}  // namespace tandril::views
