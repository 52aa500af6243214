#pragma once

#include <optional>
#include <pugixml.hpp>
#include <set>
#include <string>

#include "enterprise/language.h"
#include "enterprise/memory.h"
#include "enterprise/order_book.h"
#include "enterprise/rules.h"

namespace tandril::enterprise {

// Takes one upload into the memory, record by record, and writes an entry per record into a File of
// the upload report. A record of a new order or activity that was refused gets no entry: it cannot
// be judged, and the engineer's computer sends it again together with the corrected parent.
class Intake {
  public:
    Intake(Memory& memory, const MasterTables& tables, Language language, pugi::xml_node file);

    // `upload` is a document element of the store's shape.
    void take(pugi::xml_node upload);

  private:
    using Node = pugi::xml_node;

    Memory& memory_;
    OrderBook book_;
    Rules rules_;
    Language language_;
    Node file_;
    std::set<RecordKey> answered_;
    std::set<RecordKey> refused_;

    void takeOrder(Node record);
    void takeActivity(const std::string& order, Node record);
    void takeLine(Kind kind, const std::string& order, const std::string& activity, Node record);
    // Registrations of the section that no report speaks of are kept without an entry.
    void keepRegistration(Node record);

    std::optional<Refusal> refusalOfOrder(Node record, Node known) const;
    std::optional<Refusal> refusalOfActivity(Node record, Node order, Node known) const;
    std::optional<Refusal> refusalOfLine(const RecordKey& key, Node record, Node order,
                                         Node activity, Node known) const;
    // Whether the record hangs below a new order or activity that was refused.
    bool waitsForParent(const RecordKey& key) const;

    void answer(const RecordKey& key, const std::optional<Refusal>& refusal);

    // Real numbers for what came under provisional ones and is now in order.
    void giveNumbers();
    void giveNumbers(const std::string& order, const std::string& activity);
    void forgetNumbers(const std::string& order, const std::string& activity);
    bool refusedNow(const std::string& order, const std::string& activity = "") const;
};

}  // namespace tandril::enterprise
