// Any methods, one behind the other, with any arguments: each call either ends or is a fault, the
// files load behind it, and a method that only shows changes none.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

#include "component/methods.h"
#include "home.h"
#include "platform/fault.h"
#include "target.h"

namespace tandril::fuzz {
namespace {

constexpr std::size_t mostCalls = 12;

// The methods behind which the files may be other ones.
constexpr std::array<std::string_view, 12> changing = {
    "Initialize",     "SaveWebPage",   "DownloadXml",
    "updatexml",      "AddXml",        "SaveHra",
    "DownloadErrors", "deleteNode",    "CreateXMLStringForUpdate",
    "getFMapper",     "CompleteOrder", "deleteCompletedOrders"};

// The part of the text before the next separator, which goes with it.
std::string_view next(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

Value argumentOf(Kind kind, std::string_view text) {
    constexpr long most = std::numeric_limits<std::int16_t>::max();
    const std::string value(text);
    switch (kind) {
        case Kind::Boolean:
            return text == "true";
        case Kind::Int16:
            return static_cast<std::int16_t>(std::clamp(std::atol(value.c_str()), -most - 1, most));
        case Kind::Variant:
            return text.empty() ? Value() : Value(value);
        default:
            return value;
    }
}

// A line is the name of a method and its arguments, with tabs between them.
void make(Home& home, std::string_view line) {
    const Method* const method = findMethod(next(line, '\t'));
    if (method == nullptr) {
        return;
    }
    std::vector<Value> arguments;
    for (const Parameter& parameter : method->parameters) {
        arguments.push_back(argumentOf(parameter.kind, next(line, '\t')));
    }
    const auto before = home.files();
    try {
        method->invoke(home.client, arguments);
    } catch (const Fault&) {
        // It says so.
    }
    if (std::find(changing.begin(), changing.end(), method->name) == changing.end()) {
        require(home.files() == before, method->name);
    }
    home.requireWholeFiles();
}

void run(std::string_view input) {
    Home home;
    for (std::size_t count = 0; count < mostCalls && !input.empty(); ++count) {
        make(home, next(input, '\n'));
    }
}

}  // namespace

std::vector<Target> callTargets() {
    return {{"calls", run}};
}

}  // namespace tandril::fuzz
