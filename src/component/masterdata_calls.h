#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "component/call.h"
#include "forms/master_data_look_up.h"

// The methods that show, fetch and update the master data.
namespace tandril::masterdata_calls {

// The module's connection to the master data. Opening an open one opens it anew, closing a closed
// one does nothing.
void open(Call& call);
void close(Call& call);

std::string listing(Call& call, const std::string& code);
// The hyperlink window for the mode 1, the zoom window for any other.
std::string fieldWindow(Call& call, std::int16_t mode, const std::string& field,
                        const std::string& value);
void startArchive(Call& call, const std::string& name);
std::string synchronise(Call& call, const std::string& extract);

// What records are checked against. Asks the open connection, or one that is opened for the call
// with the first question; while the file of the current database is missing, everything is known.
// Must not outlive the call.
std::unique_ptr<forms::MasterDataLookUp> lookUp(Call& call);

}  // namespace tandril::masterdata_calls
