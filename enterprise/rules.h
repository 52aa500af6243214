#pragma once

#include <optional>
#include <pugixml.hpp>

#include "enterprise/master_tables.h"
#include "enterprise/order_book.h"
#include "enterprise/records.h"
#include "enterprise/refusal.h"

namespace tandril::enterprise {

// What the office demands of a single record, whatever order it belongs to. An empty field is no
// offence where the engineer's forms do not ask for it.
class Rules {
  public:
    Rules(const MasterTables& tables, const OrderBook& book) : tables_(tables), book_(book) {}

    // Why the record is refused; nothing when it is in order. `known` is the record in the book
    // that it replaces, null for a new one.
    std::optional<Refusal> check(Kind kind, pugi::xml_node record, pugi::xml_node known) const;

  private:
    const MasterTables& tables_;
    const OrderBook& book_;

    std::optional<Refusal> checkConfiguration(pugi::xml_node record) const;
    std::optional<Refusal> checkMaterial(pugi::xml_node record) const;
    std::optional<Refusal> checkLabour(pugi::xml_node record, pugi::xml_node known) const;
};

}  // namespace tandril::enterprise
