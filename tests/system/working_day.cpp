#include "system/working_day.h"

#include <array>
#include <functional>

#include "component/paths.h"
#include "store/records.h"
#include "surface/text_call.h"

namespace tandril::test {
namespace {

using store::RecordKey;
using store::Section;

std::string xmlOf(std::string_view sections) {
    return element("harbrook", sections);
}

std::string sectionText(Section section, std::string_view content) {
    return element(store::sectionName(section), content);
}

// A document with one record under its keys.
std::string recordAt(const RecordKey& key, std::string_view record) {
    switch (key.section) {
        case Section::Orders:
            return xmlOf(orders(record));
        case Section::Activities:
            return xmlOf(activities(group(key.order, record)));
        default:
            return xmlOf(sectionText(key.section, costGroup(key.order, key.activity, record)));
    }
}

std::string entryFor(std::string_view status, const RecordKey& key) {
    const store::CostType* type = store::costTypeOf(key.section);
    return entry(status, key.order, key.activity, key.line,
                 type == nullptr ? std::string_view() : type->word);
}

}  // namespace

std::string make(Client20& client, const DayCall& call) {
    return surface::TextCall(call.method, call.arguments).make(client);
}

void forEachRecord(xml::Node root, const std::function<void(const RecordKey&, xml::Node)>& visit) {
    for (const xml::Node order : store::candidatesBelow(root, Section::Orders)) {
        visit(store::OrderStore::keyOf(Section::Orders, order), order);
    }
    for (const Section section :
         {Section::Activities, Section::Material, Section::Labour, Section::Other}) {
        for (const xml::Node group : store::candidatesBelow(root, section)) {
            for (const xml::Node member : xml::elements(group)) {
                visit(store::OrderStore::keyOf(section, group, member), member);
            }
        }
    }
}

void prepareDay(platform::FileSystem& files) {
    files.createFolder(paths::installFolder);
    files.replace(paths::fieldMapper, "<m/>", platform::Durability::Relaxed);
    WorkingDay day(files, 1, 0);
    const std::string download = day.download();
    files.replace(paths::store, download, platform::Durability::Relaxed);
}

DayCall WorkingDay::next() {
    if (isAnswerDue_ && chance(50)) {
        isAnswerDue_ = false;
        return {"DownloadErrors", {report()}};
    }
    const std::uint32_t kind = below(100);
    if (kind < 20) return {"DownloadXml", {download()}};
    if (kind < 50) return edit();
    if (kind < 65) return add();
    if (kind < 70) return registration();
    if (kind < 75) return remove();
    if (kind < 80) return {"CreateForm", {"1", "", ""}};
    if (kind < 84) return {"CompleteOrder", {}};
    if (kind < 88) return {"deleteCompletedOrders", {""}};
    if (kind < 90) return {"Set_Mode", {chance(50) ? "Online" : "Offline"}};
    isAnswerDue_ = true;
    return {"CreateXMLStringForUpdate", {}};
}

std::string WorkingDay::stamp() {
    return "2026111" + std::to_string(below(10)) + " 10" + std::to_string(10 + below(50)) + "00";
}

std::string WorkingDay::text() {
    static constexpr std::array words{"pump", "belt", "a &lt; b", "Überprüfung",
                                      "valve &amp; seal"};
    return words[below(words.size())] + std::string(" ") + std::to_string(below(1000));
}

store::OrderStore WorkingDay::storeNow() const {
    auto loaded = store::OrderStore::from(xml::load(files_, paths::store));
    return loaded ? std::move(*loaded) : storeOf("");
}

std::string WorkingDay::anyOrder(const store::OrderStore& store) {
    const auto all = store.candidates(Section::Orders);
    return all.empty() ? "none"
                       : std::string(xml::attribute(
                             all[below(static_cast<std::uint32_t>(all.size()))], store::orderKey));
}

std::string WorkingDay::anyActivity(const store::OrderStore& store, std::string_view order) {
    std::vector<xml::Node> all;
    for (const xml::Node activity : xml::elements(store.activityGroup(order))) {
        all.push_back(activity);
    }
    return all.empty()
               ? "none"
               : std::string(xml::attribute(all[below(static_cast<std::uint32_t>(all.size()))],
                                            store::activityKey));
}

std::string WorkingDay::orderRecord(std::string_view number, std::string_view state,
                                    std::string_view status) {
    return order(number, state, status,
                 element("OrderDate", stamp()) + element("Description", text()) + closable(text()));
}

std::string WorkingDay::activityRecord(std::string_view number, std::string_view state,
                                       std::string_view status) {
    return "<record Activity=\"" + std::string(number) + "\" State=\"" + std::string(state) +
           "\">" + element("ActivityStatus", status) + element("PlannedStartTime", stamp()) +
           element("PlannedFinishTime", stamp()) + element("ActivityDescription", text()) +
           "</record>";
}

std::string WorkingDay::lineRecord(std::string_view number, std::string_view state) {
    return "<record LineNumber=\"" + std::string(number) + "\" State=\"" + std::string(state) +
           "\">" + element("Description", text()) + element("Quantity", std::to_string(below(9))) +
           "</record>";
}

// An order with one or two activities, as the content of all sections.
std::string WorkingDay::newOrder(std::string_view number) {
    std::string members = activityRecord("10", "O", chance(50) ? "15" : "20");
    if (chance(50)) members += activityRecord("20", "O", "15");
    return orders(orderRecord(number, "O", "15")) + activities(group(number, members, "O")) +
           material(costGroup(number, "10", lineRecord("1", "O"), "O")) +
           labour(costGroup(number, "10", lineRecord("1", "O") + lineRecord("2", "O"), "O"));
}

std::string WorkingDay::download() {
    const store::OrderStore store = storeNow();
    std::string sections;
    for (std::uint32_t left = 1 + below(3); left > 0; --left) {
        sections += newOrder("A" + std::to_string(++lastNumber_));
    }
    const std::string known = anyOrder(store);
    if (chance(30)) sections += orders(orderRecord(known, "O", "35"));
    if (chance(30)) {
        sections +=
            activities(group(known, activityRecord(std::to_string(30 + below(9)), "O", "15")));
    }
    if (chance(30)) {
        sections += other(costGroup(known, anyActivity(store, known), lineRecord("1", "O")));
    }
    return xmlOf(sections);
}

std::string WorkingDay::report() {
    const auto upload = xml::load(files_, paths::upload);
    std::string entries;
    if (upload) {
        forEachRecord(upload->root(), [&](const RecordKey& key, xml::Node) {
            const std::uint32_t answer = below(10);
            if (answer < 8) entries += entryFor(answer < 7 ? "Completed" : "Error", key);
        });
    }
    return element("UploadReport",
                   "<File ID=\"U" + std::to_string(below(1000)) + "\">" + entries + "</File>");
}

DayCall WorkingDay::edit() {
    const store::OrderStore store = storeNow();
    const std::string order = anyOrder(store);
    const std::string activity = anyActivity(store, order);
    switch (below(4)) {
        case 0:
            return {"updatexml",
                    {recordAt({Section::Orders, order}, orderRecord(order, "", "15"))}};
        case 1:
            return {"updatexml",
                    {recordAt({Section::Labour, order, activity}, lineRecord("1", ""))}};
        default:
            return {"updatexml",
                    {recordAt({Section::Activities, order}, activityRecord(activity, "", "20"))}};
    }
}

DayCall WorkingDay::add() {
    const store::OrderStore store = storeNow();
    const std::string order = anyOrder(store);
    const std::string number = "_" + std::to_string(++lastNumber_);
    switch (below(3)) {
        case 0:
            return {"AddXml",
                    {xmlOf(orders(orderRecord(number, "", "15")) +
                           activities(group(number, activityRecord("_1", "", "15"))))}};
        case 1:
            return {"AddXml",
                    {recordAt({Section::Activities, order}, activityRecord(number, "", "15"))}};
        default:
            return {"AddXml",
                    {recordAt({Section::Other, order, anyActivity(store, order)},
                              lineRecord(number, ""))}};
    }
}

DayCall WorkingDay::remove() {
    const store::OrderStore store = storeNow();
    const std::string order = anyOrder(store);
    if (chance(30)) return {"deleteNode", {order, "", "", ""}};
    const std::string activity = anyActivity(store, order);
    if (chance(50)) return {"deleteNode", {order, activity, "", ""}};
    return {"deleteNode", {order, activity, "1", "labor"}};
}

DayCall WorkingDay::registration() {
    return {"SaveHra",
            {xmlOf(registrations(lineRecord("_" + std::to_string(++lastNumber_), "N")))}};
}

}  // namespace tandril::test
