#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/sections.h"
#include "xml/node.h"

namespace tandril::store {

// What a check found in one field of a record.
struct CheckFinding {
    enum class Kind {
        Failure,      // the record is not as it must be
        LookUpFault,  // the master data could not be asked; the field counts as valid
    };
    Kind kind;
    std::string text;
};

// A record that is about to be taken, or was.
struct CheckedRecord {
    Section section;
    xml::Node record;
    // An edit whose texts are laid over the record: only the fields that both have are checked, in
    // the edit's order, and master data is asked only for the texts that it changes. Null: the
    // record is checked as it stands.
    xml::Node edit = {};
    // The status of the activity, for a cost line; orders and activities have their own.
    std::string_view activityStatus = {};
};

// Judges records by rules that the store itself does not know.
class RecordCheck {
  public:
    virtual ~RecordCheck() = default;

    // The findings of all fields, in the order in which they were made; none for a good record.
    virtual std::vector<CheckFinding> check(const CheckedRecord& checked) = 0;
};

}  // namespace tandril::store
