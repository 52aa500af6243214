#pragma once

#include <string>
#include <string_view>

#include "masterdata/tables.h"
#include "xml/node.h"

namespace tandril::masterdata {

// The statement that brings a row of an extract into the table: its attribute STATUS says whether
// the row is inserted ("I"), modified ("M") or deleted ("D"); any other row is skipped and has the
// statement "". Throws Fault for a text that cannot stand in a statement, and for the deletion of
// an object, for which the extract has no valid form.
std::string rowStatement(const Table& table, std::string_view company, xml::Node row);

}  // namespace tandril::masterdata
