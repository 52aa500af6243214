#pragma once

#include <string_view>

namespace tandril::forms {

// What the check of records asks the master data. Every function throws Fault when the master data
// is there but cannot answer; while there is none, everything is known.
class MasterDataLookUp {
  public:
    virtual ~MasterDataLookUp() = default;

    // Whether the table that the field's values are chosen from has that value.
    virtual bool hasValue(std::string_view field, std::string_view value) = 0;

    // Whether the configuration has an object of that name, which compares exactly, or of that
    // number.
    virtual bool hasObject(std::string_view configuration, std::string_view object) = 0;
    virtual bool hasObjectNumber(std::string_view configuration, std::string_view number) = 0;
};

}  // namespace tandril::forms
