#pragma once

#include <memory>

#include "component/call.h"
#include "store/record_check.h"

namespace tandril {

// The check of records as this call is to make it. Lives no longer than the call.
std::unique_ptr<store::RecordCheck> recordCheckFor(Call& call);

}  // namespace tandril
