#pragma once

#include <functional>

#include "mapper/field_mapper.h"
#include "platform/database.h"

namespace tandril::masterdata {

// What the windows of the master data are made from.
struct Source {
    const mapper::FieldMapper& mapper;
    bool hasDatabase;  // the file of the current database is there
    // The open connection; throws Fault when there is none. Asked for only when it is needed.
    std::function<platform::Connection&()> connection;
};

}  // namespace tandril::masterdata
