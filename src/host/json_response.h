#pragma once

#include <nlohmann/json.hpp>

#include "host/http_message.h"

namespace tandril::host {

// A value as one line of JSON.
Response jsonResponse(int status, const nlohmann::ordered_json& body);

}  // namespace tandril::host
