#pragma once

#include <string>
#include <string_view>

#include "forms/master_data_look_up.h"
#include "store/sections.h"

namespace tandril::forms {

// A field of a record, and what its rules want to know of the rest of the record.
struct CheckedField {
    store::Section section;
    std::string_view name;
    std::string value;
    bool isLookedUp;  // an unchanged value is not looked up again
    std::string_view status;
    std::string_view configuration;
    std::string_view interrupted;
};

// The message code of what is wrong with the field; "" when nothing is. Throws Fault when the
// master data cannot answer.
std::string_view failureOf(const CheckedField& field, MasterDataLookUp& masterData);

}  // namespace tandril::forms
