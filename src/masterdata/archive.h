#pragma once

#include <string_view>

#include "mapper/labels.h"
#include "platform/shell.h"

namespace tandril::masterdata {

// Starts the self-extracting archive `name` + ".exe" that lies in the folder of the master data,
// and does not wait for it. What is no plain file name, is not there or does not start is shown to
// the user as a missing archive.
void startArchive(platform::Shell& shell, std::string_view folder, std::string_view name,
                  const mapper::Labels& label);

}  // namespace tandril::masterdata
