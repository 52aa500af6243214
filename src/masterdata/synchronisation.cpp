#include "masterdata/synchronisation.h"

#include <array>
#include <exception>
#include <optional>

#include "masterdata/row_statement.h"
#include "masterdata/tables.h"
#include "platform/fault.h"
#include "xml/document.h"
#include "xml/node.h"

namespace tandril::masterdata {
namespace {

constexpr std::string_view unitName = "HBMasterData";

constexpr std::size_t tableCount = 20;

// The rows of a unit by table, in the order of tables(); null for a table without rows.
using Groups = std::array<xml::Node, tableCount>;

// The group of a table is the first element of its name that belongs to no service centre.
Groups groupsOf(xml::Node unit) {
    const auto all = tables();
    Groups groups;
    for (xml::Node element = xml::nextElement(unit, unit); element;
         element = xml::nextElement(element, unit)) {
        const Table* table = tableOfName(element.name());
        if (table == nullptr || !xml::attribute(element, "SERVICECENTER").empty()) {
            continue;
        }
        xml::Node& group = groups.at(static_cast<std::size_t>(table - all.data()));
        if (!group) {
            group = element;
        }
    }
    return groups;
}

// One transaction for the rows of a table. What stands before a failure is kept.
void applyRows(platform::Connection& connection, const Table& table, std::string_view company,
               xml::Node group) {
    connection.begin();
    try {
        for (const xml::Node row : xml::elements(group)) {
            const std::string sql = rowStatement(table, company, row);
            if (!sql.empty()) {
                connection.execute(sql);
            }
        }
    } catch (const Fault&) {
        connection.commit();
        throw;
    }
    connection.commit();
}

class Synchroniser {
  public:
    explicit Synchroniser(const OpenConnection& open) : open_(open) {}

    void applyUnit(xml::Node unit) {
        const Groups groups = groupsOf(unit);
        const std::string_view company = xml::attribute(unit, companyColumn.data());
        for (std::size_t index = 0; index < groups.size(); ++index) {
            if (xml::hasElements(groups.at(index))) {
                applyTable(tables()[index], company, groups.at(index));
            }
        }
    }

  private:
    void applyTable(const Table& table, std::string_view company, xml::Node group) {
        try {
            // One connection serves all tables; one that did not open is tried again.
            if (!connection_) {
                connection_ = open_();
            }
            if (connection_) {
                applyRows(*connection_, table, company, group);
            }
        } catch (const Fault&) {
            // The table has failed, which is nobody's business but its own. Work that could not be
            // committed goes with the connection.
            connection_.reset();
        }
    }

    const OpenConnection& open_;
    std::unique_ptr<platform::Connection> connection_;
};

void applyUnits(const xml::Document& document, const OpenConnection& open) {
    Synchroniser synchroniser(open);
    const xml::Node root = document.root();
    for (xml::Node element = root; element; element = xml::nextElement(element, root)) {
        if (xml::isNamed(element, unitName)) {
            synchroniser.applyUnit(element);
        }
    }
}

}  // namespace

std::string synchronise(std::string_view extract, const OpenConnection& open) {
    const std::optional<xml::Document> document = xml::Document::parse(extract);
    if (!document) {
        return "INVALID XML String!!";
    }
    try {
        applyUnits(*document, open);
    } catch (const std::exception&) {
        return "FAILED";
    }
    return "SUCCESSFUL";
}

}  // namespace tandril::masterdata
