#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"
#include "store/order_store.h"
#include "store/record_key.h"
#include "xml/document.h"

namespace tandril::store {

// Copies of records that left the store without the user's doing while they held work, so that
// nothing is ever lost to a wrong answer of the server.
class RemovedRecords {
  public:
    // What took the record out.
    enum class Reason { Report, Purge };

    struct Entry {
        std::string id;  // a number, unique in the document
        std::string time;
        std::string reason;  // "report" or "purge"
        RecordKey key;
        std::string groupState;  // of the group that the record stood in; "" for none
        xml::Node record;
    };

    RemovedRecords();
    explicit RemovedRecords(xml::Document document);

    // What a file of all copies holds. Valid as long as the object, which must not change.
    platform::Content content() const { return document_.content(added_); }
    bool isChanged() const { return isChanged_; }

    // Keeps a copy of the record.
    void add(const RecordKey& key, xml::Node record, Reason reason, std::string_view time);

    // The copies that the document held when the object was made, the oldest first.
    std::vector<Entry> entries() const;

    // Forgets the copy.
    void remove(const Entry& entry);

  private:
    xml::Document document_;
    // Entries behind those of the document, in pieces. Copies of the records' trees would take
    // several times the memory of their text, and one long text more than that while it grows.
    std::vector<std::string> added_;
    bool isChanged_ = false;
    std::size_t lastId_ = 0;
};

// Puts a copy back to where its record was, with the state that it had; a group that is gone is
// made anew. Returns false, and changes nothing, when there is such a record already.
bool restore(OrderStore& store, const RemovedRecords::Entry& entry);

// Makes a record that was sent one that is to be sent again.
void markUnsent(OrderStore& store, const RecordKey& key);

}  // namespace tandril::store
