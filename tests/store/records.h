#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/order_store.h"
#include "store/record_check.h"
#include "store/upload_report.h"
#include "support/documents.h"

// Short spellings of stores, reports and checks for the tests of this folder.
namespace tandril::test {

inline std::string element(std::string_view name, std::string_view content) {
    const std::string tag(name);
    return content.empty() ? "<" + tag + "/>"
                           : "<" + tag + ">" + std::string(content) + "</" + tag + ">";
}

inline std::string orders(std::string_view records) {
    return element("ccsocservcordr", records);
}
inline std::string activities(std::string_view groups) {
    return element("ccsocservcactv", groups);
}
inline std::string material(std::string_view groups) {
    return element("ccsocservcmatl", groups);
}
inline std::string labour(std::string_view groups) {
    return element("ccsocservclabr", groups);
}
inline std::string other(std::string_view groups) {
    return element("ccsocservcothr", groups);
}
inline std::string registrations(std::string_view lines) {
    return element("ccsocservchra", lines);
}

inline std::string order(std::string_view number, std::string_view state, std::string_view status,
                         std::string_view moreFields = {}) {
    return "<record ServiceOrder=\"" + std::string(number) + "\" State=\"" + std::string(state) +
           "\">" + element("OrderStatus", status) + std::string(moreFields) + "</record>";
}

// The 22 fields behind the status that an order needs to be closed, each with that text.
inline std::string closable(std::string_view text) {
    std::string fields;
    for (int field = 1; field <= 22; ++field) {
        fields += element("f" + std::to_string(field), text);
    }
    return fields;
}

inline std::string activity(std::string_view number, std::string_view state,
                            std::string_view status) {
    return "<record Activity=\"" + std::string(number) + "\" State=\"" + std::string(state) +
           "\">" + element("ActivityStatus", status) + "</record>";
}

inline std::string line(std::string_view number, std::string_view state, std::string_view text) {
    return "<record LineNumber=\"" + std::string(number) + "\" State=\"" + std::string(state) +
           "\">" + element("Description", text) + "</record>";
}

// A group of activities, or of cost lines when there is an activity. No `state` leaves it out.
inline std::string group(std::string_view order, std::string_view members,
                         std::string_view state = {}) {
    const std::string attribute =
        state.empty() ? std::string() : " State=\"" + std::string(state) + "\"";
    const std::string start = "<ServiceOrder ID=\"" + std::string(order) + "\"" + attribute;
    return members.empty() ? start + "/>" : start + ">" + std::string(members) + "</ServiceOrder>";
}
inline std::string costGroup(std::string_view order, std::string_view activity,
                             std::string_view members, std::string_view state = {}) {
    std::string text = group(order, members, state);
    const std::string keys = "<ServiceOrder ID=\"" + std::string(order) + "\"";
    return text.insert(keys.size(), " Activity=\"" + std::string(activity) + "\"");
}

// What the store's root holds.
inline std::string sectionsOf(const store::OrderStore& store) {
    std::string text;
    for (const xml::Node section : store.document().root().children()) {
        text += xml::toText(section);
    }
    return text;
}

inline store::UploadReport reportOf(std::string_view files) {
    return store::UploadReport(document(element("Report", files)));
}

inline std::string entry(std::string_view status, std::string_view order,
                         std::string_view activity = {}, std::string_view line = {},
                         std::string_view costType = {}) {
    return "<Entry Status=\"" + std::string(status) + "\" Order=\"" + std::string(order) +
           "\" Activity=\"" + std::string(activity) + "\" CostLine=\"" + std::string(line) +
           "\" CostType=\"" + std::string(costType) + "\"/>";
}

// A check that finds what a test has said, and remembers what it was asked.
class ScriptedCheck : public store::RecordCheck {
  public:
    std::vector<store::CheckFinding> check(const store::CheckedRecord& checked) override {
        asked.push_back(
            std::string(store::sectionName(checked.section)) + " " + xml::toText(checked.record) +
            (checked.edit ? " edit " + xml::toText(checked.edit) : "") +
            (checked.activityStatus.empty() ? ""
                                            : " activity " + std::string(checked.activityStatus)));
        return asked.size() > findings.size() ? std::vector<store::CheckFinding>()
                                              : findings[asked.size() - 1];
    }

    std::vector<std::vector<store::CheckFinding>> findings;  // of the first call, the second, ...
    std::vector<std::string> asked;
};

}  // namespace tandril::test
