#pragma once

#include <string>
#include <string_view>

// Names for the file in which a new content is written beside the file that it will replace. Few
// and known in advance, so that what a killed process left there is found without a search.
namespace tandril::platform {

// The names to try first, numbered from 1. Processes that replace the same file at the same time
// take one each.
inline constexpr int temporaryNames = 4;

// The name of that number for the file `target`: ".tandril-Harbrook.xml-1.tmp".
std::string temporaryName(std::string_view target, int number);

// A name that nothing has yet, for when none of the numbered ones can be had.
std::string randomTemporaryName();

}  // namespace tandril::platform
