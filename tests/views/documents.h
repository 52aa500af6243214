#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "mapper/field_mapper.h"
#include "store/order_store.h"

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
    return mapper::FieldMapper(document("<m>" + std::string(sections) + "</m>"));
}

}  // namespace tandril::test
