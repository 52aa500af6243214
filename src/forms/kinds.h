#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/sections.h"

// The kinds of records that have forms, and what their forms differ in.
namespace tandril::forms {

// What a record hangs on, and with that how many parts its key has and which counter numbers it.
enum class Level { Order, Activity, Line };

// The key of a record. The parts that its level does not have are empty.
struct RecordKey {
    std::string order;
    std::string activity;
    std::string line;
};

struct FormKind {
    std::string_view number;  // what the page calls the kind
    std::string_view word;    // begins the form's name
    Level level;
    store::Section section;  // where the records are found, and their field definitions
    // Message codes: the titles of the two forms, the links that lead to a new record of this kind
    // and to the list of all, and the rows that show the key, one for each of its first parts.
    std::string_view detailTitle;
    std::string_view creationTitle;
    std::string_view newLabel;
    std::string_view listLabel;
    std::span<const std::string_view> detailKeyLabels;
    std::span<const std::string_view> creationKeyLabels;
};

// The kind with that number, "1" to "5"; null for another.
const FormKind* formKind(std::string_view number);

const FormKind& orderKind();
const FormKind& activityKind();
const FormKind& materialKind();
// Material, labour and other lines.
std::span<const FormKind> costLineKinds();

// Lines that may hang on no order. Their fields are defined with those of labour lines.
const FormKind& hourRegistrationKind();

// The key without the parts that the level does not have.
RecordKey keyAt(Level level, RecordKey key);
// The parts of a key at that level, from the order on.
std::vector<std::string_view> keyParts(Level level, const RecordKey& key);

// The name that the page finds a form by: "activity_A1_10".
std::string formName(const FormKind& kind, const RecordKey& key);
// The name of a form whose record hangs on nothing yet: "hra__5".
std::string formName(const FormKind& kind, std::string_view number);

}  // namespace tandril::forms
