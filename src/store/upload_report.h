#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/record_key.h"
#include "xml/document.h"
#include "xml/node.h"

namespace tandril::store {

// One entry of the upload report: what the server said of one record. Views into the report.
struct ReportEntry {
    xml::Node node;

    bool isCompleted() const { return xml::attribute(node, "Status") == "Completed"; }
    bool isError() const { return xml::attribute(node, "Status") == "Error"; }
    std::string_view order() const { return xml::attribute(node, "Order"); }
    std::string_view activity() const { return xml::attribute(node, "Activity"); }
    std::string_view line() const { return xml::attribute(node, "CostLine"); }
    std::string_view costType() const { return xml::attribute(node, "CostType"); }
    std::string_view description() const { return xml::attribute(node, "Description"); }

    // The record that the entry is about. An unknown cost type stands for an order.
    RecordKey key() const;
};

// The server's answers to uploads that are still of interest: those that wait for the store, and
// refusals until their record is changed or gone. The document element holds a `File` for each
// upload, and these hold the entries. Entries of a record are found through indexes that are built
// when the first one is looked for.
class UploadReport {
  public:
    explicit UploadReport(xml::Document document);

    const xml::Document& document() const { return document_; }
    // Whether anything was changed since the object was made.
    bool isChanged() const { return isChanged_; }

    // All entries, in document order.
    std::vector<ReportEntry> entries() const;
    std::size_t countErrors() const;

    // Appends the uploads of another report. Counts as a change also when it has none.
    void append(const UploadReport& other);

    // Takes out the entries that name the record exactly, or those of the record and of everything
    // below it. Their `File` stays.
    void removeExact(const RecordKey& key);
    void removeBelow(const RecordKey& key);
    // Takes out every entry of a completed record, and every `File` without entries.
    void removeCompleted();

  private:
    // Indexes of entries_ by a key.
    using Index = std::unordered_map<std::string, std::vector<std::uint32_t>>;
    struct Indexed {
        std::vector<ReportEntry> entries;  // a null node where one was taken out
        Index byOrder;
        Index byActivity;  // order and activity
        Index byRecord;    // all four keys
    };

    Indexed& indexed() const;
    void remove(xml::Node element);
    void removeAll(const Index& index, const std::string& key);

    xml::Document document_;
    bool isChanged_ = false;
    mutable std::optional<Indexed> indexed_;
};

// The numbers of all orders with a refused record, once for each entry. Throws Fault when there are
// more entries than the list of them ever held.
std::vector<std::string> errorOrders(const UploadReport& report);

}  // namespace tandril::store
