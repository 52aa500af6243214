#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tandril::fuzz {

// One way into the system: takes any bytes, and ends the process by require() when something that
// must always hold does not.
struct Target {
    std::string name;
    std::function<void(std::string_view input)> run;
};

// The methods that take an XML text, over a home full of records.
std::vector<Target> methodTargets();
// Any methods with any arguments.
std::vector<Target> callTargets();
// The files of a home, as another program or a damaged disk may leave them.
std::vector<Target> fileTargets();
// The readers of texts alone.
std::vector<Target> textTargets();

// Ends the process with the text when `holds` is false; the fuzzer keeps the input then.
void require(bool holds, std::string_view what);

}  // namespace tandril::fuzz
