#pragma once

#include <optional>
#include <string>

#include "forms/kinds.h"
#include "mapper/field_mapper.h"
#include "store/order_store.h"

namespace tandril::forms {

// The panel with all fields of one record, the links to the records below it, and the buttons that
// save and delete it; nothing when there is no such record. A record that is open, or that was
// changed and sent already, can be edited; one that is opened to correct an error of the upload
// always.
std::optional<std::string> detailForm(const mapper::FieldMapper& mapper,
                                      const store::OrderStore& store, const FormKind& kind,
                                      const RecordKey& key, bool correctsError);

// The panel for a kind of record that has no form: a frame without title and content.
std::string emptyDetailForm();

}  // namespace tandril::forms
