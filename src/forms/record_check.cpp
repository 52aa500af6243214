#include "forms/record_check.h"

#include <algorithm>
#include <utility>

#include "forms/check_rules.h"
#include "forms/fields.h"
#include "html/html.h"
#include "platform/fault.h"
#include "store/order_store.h"
#include "xml/node.h"

namespace tandril::forms {
namespace {

using store::CheckedRecord;
using store::CheckFinding;

// A text of the record, as the edit leaves it: of texts for one field the last stays.
std::string laidOver(const CheckedRecord& checked, std::string_view name) {
    xml::Node text = xml::child(checked.record, name);
    if (text && checked.edit) {
        for (const xml::Node edited : xml::elements(checked.edit)) {
            text = xml::isNamed(edited, name) ? edited : text;
        }
    }
    return xml::text(text);
}

std::string statusOf(const CheckedRecord& checked) {
    if (store::costTypeOf(checked.section) != nullptr) {
        return std::string(checked.activityStatus);
    }
    return laidOver(checked, xml::elementAt(checked.record, 0).name());
}

// The record's fields, or those of an edit that the record has.
std::vector<CheckedField> checkedFields(const CheckedRecord& checked) {
    std::vector<CheckedField> found;
    for (const xml::Node child : xml::elements(checked.edit ? checked.edit : checked.record)) {
        const xml::Node stored = checked.edit ? xml::child(checked.record, child.name()) : child;
        if (stored) {
            std::string value = xml::text(child);
            const bool isLookedUp = !checked.edit || value != xml::text(stored);
            found.push_back(
                {checked.section, child.name(), std::move(value), isLookedUp, {}, {}, {}});
        }
    }
    return found;
}

// Findings go into logs whose entries are lines; a database's own words may have several.
std::string oneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return text;
}

}  // namespace

std::vector<CheckFinding> RecordCheck::check(const CheckedRecord& checked) {
    const std::string status = statusOf(checked);
    const std::string configuration = laidOver(checked, fields::configuration);
    const std::string interrupted = laidOver(checked, fields::interrupted);
    std::vector<CheckFinding> findings;
    for (CheckedField& field : checkedFields(checked)) {
        field.status = status;
        field.configuration = configuration;
        field.interrupted = interrupted;
        try {
            const std::string_view code = failureOf(field, masterData_);
            if (!code.empty()) {
                findings.push_back(
                    {CheckFinding::Kind::Failure, failureText(checked.section, field.name, code)});
            }
        } catch (const Fault& fault) {
            findings.push_back({CheckFinding::Kind::LookUpFault, oneLine(fault.what())});
        }
    }
    return findings;
}

std::string RecordCheck::failureText(store::Section section, std::string_view field,
                                     std::string_view code) const {
    std::string_view name = field;
    std::string_view text;
    if (mapper_ != nullptr) {
        name = mapper_->properties(store::sectionName(section), field).label;
        text = mapper_->text(code).value_or("");
    }
    return html::joined({name, " ", text.empty() ? code : text});
}

}  // namespace tandril::forms
