#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

// How answers and files of a recorded day are compared with what is there now. Each function
// returns "" when they agree, and otherwise what differs and where.
namespace tandril::test {

std::string compareText(std::string_view expected, std::string_view actual);

// Compares documents by what they say: the declaration, quotes, the order of attributes, CDATA
// sections and blank text between elements make no difference.
std::string compareXml(std::string_view expected, std::string_view actual);

// Compares logs. "<TIME>" stands for any date, a run of "Error =   <DBFAULT>" lines for one or more
// error lines of any text.
std::string compareLog(std::string_view expected, std::string_view actual);

// Compares the answers of one call. `isAfterFault` tells that the call before ended in a fault: the
// error text may read "" or "1" then, since both mean no error.
std::string compareAnswer(const nlohmann::json& step, const nlohmann::json& actual,
                          bool isAfterFault);

}  // namespace tandril::test
