#include "host/json_response.h"

#include "surface/json_text.h"

namespace tandril::host {

Response jsonResponse(int status, const nlohmann::ordered_json& body) {
    return {status, "application/json", surface::toLine(body) + '\n', {}};
}

}  // namespace tandril::host
