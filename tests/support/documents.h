#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "mapper/field_mapper.h"
#include "store/order_store.h"
#include "xml/document.h"

// Documents from what a test says of them. A text that is no such document is a mistake in the test
// and throws.
namespace tandril::test {

inline xml::Document document(std::string_view text) {
    auto parsed = xml::Document::parse(text);
    if (!parsed) {
        throw std::invalid_argument("not well-formed: " + std::string(text));
    }
    return std::move(*parsed);
}

inline store::OrderStore storeOf(std::string_view sections) {
    auto opened =
        store::OrderStore::from(document("<harbrook>" + std::string(sections) + "</harbrook>"));
    if (!opened) {
        throw std::invalid_argument("not a store");
    }
    return std::move(*opened);
}

inline mapper::FieldMapper mapperOf(std::string_view sections) {
    return mapper::FieldMapper(document("<mapper>" + std::string(sections) + "</mapper>"));
}

}  // namespace tandril::test
