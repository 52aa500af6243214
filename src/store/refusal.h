#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/record_key.h"

namespace tandril::store {

// Message codes of what the rules of the store refuse.
namespace refusal {
inline constexpr std::string_view notAnEdit = "SLBEU0323";  // also: no such record
inline constexpr std::string_view notAnAddition = "SLBEU0269";
inline constexpr std::string_view orderExists = "SLBEU0324";
inline constexpr std::string_view activityExists = "SLBEU0325";
inline constexpr std::string_view lineExists = "SLBEU0326";
}  // namespace refusal

// Why a change was refused: a message code, or the finished text of a record check.
struct Refusal {
    std::string_view code;  // "" when there is a text
    std::string text = {};
};

// What became of a change of the store. A refused change left the store as it was.
struct ChangeResult {
    std::optional<Refusal> refusal;
    // What record checks could not find out, for the log.
    std::vector<std::string> lookUpFaults;
    // Records that will be sent again: what the server said of them before is out of date.
    std::vector<RecordKey> resent;
};

}  // namespace tandril::store
