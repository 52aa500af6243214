#pragma once

#include <string>

#include "store/order_store.h"

// What a call that failed half-way may leave.
namespace tandril::test {

inline bool isStore(const std::string& bytes) {
    return store::OrderStore::from(xml::Document::decode(bytes)).has_value();
}

// Whether the call keeps what it did before the fault: orders are completed ahead of an upload, and
// a download is merged ahead of the purge.
inline bool mayKeepPart(const std::string& method) {
    return method == "CreateXMLStringForUpdate" || method == "DownloadXml";
}

}  // namespace tandril::test
