#include "enterprise/intake.h"

#include <algorithm>

#include "enterprise/nodes.h"

namespace tandril::enterprise {
namespace {

using Node = pugi::xml_node;
using Reason = Refusal::Reason;

// The office closed the order and no download has told so yet.
bool isClosedUnheard(Node order) {
    return attribute(order, "Closed") == "unheard";
}

void markTouched(Node order) {
    if (order && !order.attribute("Touched")) order.append_attribute("Touched").set_value("1");
}

}  // namespace

Intake::Intake(Memory& memory, const MasterTables& tables, Language language, Node file)
    : memory_(memory),
      book_(memory.book()),
      rules_(tables, book_),
      language_(language),
      file_(file) {}

void Intake::take(Node upload) {
    for (const Node record : upload.child(sectionOf(Kind::Order)).children("record")) {
        takeOrder(record);
    }
    for (const Node group : elements(upload.child(sectionOf(Kind::Activity)))) {
        for (const Node record : elements(group)) takeActivity(attribute(group, "ID"), record);
    }
    for (const Kind kind : {Kind::Material, Kind::Labour, Kind::Other}) {
        for (const Node group : elements(upload.child(sectionOf(kind)))) {
            for (const Node record : elements(group)) {
                takeLine(kind, attribute(group, "ID"), attribute(group, "Activity"), record);
            }
        }
    }
    for (const Node record : elements(upload.child("ccsocservchra"))) keepRegistration(record);
    giveNumbers();
}

void Intake::takeOrder(Node record) {
    const RecordKey key{Kind::Order, attribute(record, "ServiceOrder"), "", ""};
    Node known = book_.order(key.order);
    const auto refusal = refusalOfOrder(record, known);
    if (!refusal) {
        if (!known) known = book_.addOrder(key.order);
        OrderBook::replaceFields(known, record);
    }
    markTouched(known);
    answer(key, refusal);
}

std::optional<Refusal> Intake::refusalOfOrder(Node record, Node known) const {
    if (!known && !isProvisional(attribute(record, "ServiceOrder"))) {
        return Refusal{Reason::UnknownOrder, ""};
    }
    if (isClosedUnheard(known)) return Refusal{Reason::ClosedOrder, ""};
    return rules_.check(Kind::Order, record, known);
}

void Intake::takeActivity(const std::string& order, Node record) {
    const RecordKey key{Kind::Activity, order, attribute(record, "Activity"), ""};
    if (waitsForParent(key)) return;
    const Node owner = book_.order(order);
    Node known = book_.activity(owner, key.activity);
    const auto refusal = refusalOfActivity(record, owner, known);
    if (!refusal) {
        if (!known) known = book_.addActivity(owner, key.activity);
        OrderBook::replaceFields(known, record);
    }
    markTouched(owner);
    answer(key, refusal);
}

std::optional<Refusal> Intake::refusalOfActivity(Node record, Node order, Node known) const {
    if (!order) return Refusal{Reason::UnknownOrder, ""};
    if (isClosedUnheard(order)) return Refusal{Reason::ClosedOrder, ""};
    if (!known && !isProvisional(attribute(record, "Activity"))) {
        return Refusal{Reason::UnknownActivity, ""};
    }
    return rules_.check(Kind::Activity, record, known);
}

void Intake::takeLine(Kind kind, const std::string& order, const std::string& activity,
                      Node record) {
    const RecordKey key{kind, order, activity, attribute(record, "LineNumber")};
    if (waitsForParent(key)) return;
    const Node owner = book_.order(order);
    const Node work = book_.activity(owner, activity);
    Node known = book_.line(book_.lineGroup(kind, owner, work), key.line);
    const auto refusal = refusalOfLine(key, record, owner, work, known);
    if (!refusal) {
        if (!known) known = book_.addLine(kind, owner, work, key.line);
        OrderBook::replaceFields(known, record);
    }
    markTouched(owner);
    answer(key, refusal);
}

std::optional<Refusal> Intake::refusalOfLine(const RecordKey& key, Node record, Node order,
                                             Node activity, Node known) const {
    const bool registration = key.kind == Kind::Labour && key.order.empty() && key.activity.empty();
    if (!registration) {
        if (!order) return Refusal{Reason::UnknownOrder, ""};
        if (!activity) return Refusal{Reason::UnknownActivity, ""};
        if (isClosedUnheard(order)) return Refusal{Reason::ClosedOrder, ""};
    }
    return rules_.check(key.kind, record, known);
}

void Intake::keepRegistration(Node record) {
    Node section = memory_.book().child("ccsocservchra");
    const std::string number = attribute(record, "LineNumber");
    Node known = section.find_child_by_attribute("LineNumber", number.c_str());
    if (!known) {
        known = section.append_child("record");
        known.append_attribute("LineNumber").set_value(number.c_str());
    }
    OrderBook::replaceFields(known, record);
}

bool Intake::waitsForParent(const RecordKey& key) const {
    if (refused_.contains({Kind::Order, key.order, "", ""}) && !book_.order(key.order) &&
        isProvisional(key.order)) {
        return true;
    }
    return key.kind != Kind::Activity && isProvisional(key.activity) &&
           refused_.contains({Kind::Activity, key.order, key.activity, ""}) &&
           !book_.activity(book_.order(key.order), key.activity);
}

void Intake::answer(const RecordKey& key, const std::optional<Refusal>& refusal) {
    answered_.insert(key);
    if (refusal) refused_.insert(key);
    memory_.setRefused(key, refusal.has_value());
    Node entry = file_.append_child("Entry");
    entry.append_attribute("Status").set_value(refusal ? "Error" : "Completed");
    entry.append_attribute("Order").set_value(key.order.c_str());
    entry.append_attribute("Activity").set_value(key.activity.c_str());
    entry.append_attribute("CostLine").set_value(key.line.c_str());
    entry.append_attribute("CostType").set_value(costTypeOf(key.kind));
    entry.append_attribute("Description")
        .set_value(refusal ? describe(*refusal, language_).c_str() : "");
}

bool Intake::refusedNow(const std::string& order, const std::string& activity) const {
    return std::ranges::any_of(refused_, [&](const RecordKey& key) {
        return key.order == order && (activity.empty() || key.activity == activity);
    });
}

// While one of its records is refused, a new order or activity keeps its provisional number, and
// the engineer's computer keeps the whole of it. Once a refused record was left out, it may have
// been deleted or may come corrected later; until then the provisional number stays known.
void Intake::giveNumbers() {
    for (const RecordKey& key : answered_) {
        if (!refusedNow(key.order, key.activity)) giveNumbers(key.order, key.activity);
    }
    for (const RecordKey& key : answered_) {
        if (!memory_.hasRefusedIn(key.order, key.activity)) forgetNumbers(key.order, key.activity);
    }
}

void Intake::giveNumbers(const std::string& order, const std::string& activity) {
    const Node owner = book_.order(order);
    const Node work = book_.activity(owner, activity);
    const bool provisional = isProvisional(attribute(owner, "ServiceOrder"));
    if (owner && activity.empty() && provisional) book_.giveNumbers(owner);
    if (work && !provisional) book_.giveNumbers(owner, work);
}

void Intake::forgetNumbers(const std::string& order, const std::string& activity) {
    const Node owner = book_.order(order);
    const Node work = book_.activity(owner, activity);
    if (owner && activity.empty()) book_.forgetProvisionalNumbers(owner);
    if (work) book_.forgetProvisionalNumbers(owner, work);
}

}  // namespace tandril::enterprise
