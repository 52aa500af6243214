#include "surface/json_text.h"

namespace tandril::surface {
namespace {

using nlohmann::json;

constexpr int deepest = 100;

bool refuseDeepNesting(int depth, json::parse_event_t event, json&) {
    using Event = json::parse_event_t;
    const bool opens = event == Event::array_start || event == Event::object_start;
    if (opens && depth >= deepest) {
        throw InvalidJson("the JSON nests deeper than " + std::to_string(deepest) + " levels");
    }
    return true;
}

}  // namespace

json parseJson(std::string_view text) {
    try {
        return json::parse(text, refuseDeepNesting);
    } catch (const json::parse_error& error) {
        throw InvalidJson("not JSON at byte " + std::to_string(error.byte));
    } catch (const json::out_of_range&) {
        throw InvalidJson("the JSON has a number that is out of range");
    }
}

std::string toLine(const nlohmann::ordered_json& value) {
    constexpr int oneLine = -1;
    constexpr bool keepUtf8 = false;
    return value.dump(oneLine, ' ', keepUtf8, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace tandril::surface
