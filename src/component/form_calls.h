#pragma once

#include <cstdint>
#include <string>

#include "component/call.h"
#include "forms/kinds.h"

// The methods that show forms, and the parts of forms that the page asks for separately.
namespace tandril::form_calls {

std::string details(Call& call, const std::string& kindNumber, const forms::RecordKey& key,
                    bool correctsError);
std::string registrationDetails(Call& call, const forms::RecordKey& key, bool correctsError);

// A new record below an order and an activity, named by `parent`. Opening its form draws its
// number.
std::string creation(Call& call, const std::string& kindNumber, const forms::RecordKey& parent);
std::string newActivity(Call& call, const std::string& kindNumber);
std::string newMaterialLine(Call& call);
std::string newRegistration(Call& call);

std::string orderOptions(Call& call);
std::string activityOptions(Call& call, const std::string& order);

// Leaves `columns` alone when there is no field mapper.
std::string registrationHeadings(Call& call, std::int16_t& columns, const std::string& section);

}  // namespace tandril::form_calls
